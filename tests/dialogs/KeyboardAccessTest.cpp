// Every dialog can be completed from the keyboard: Tab walks its controls in
// reading order, Enter is OK, Esc is Cancel, and no number control is too
// narrow for its values.
#include "dialogs/CAdjustDlg.h"
#include "dialogs/CAverageDlg.h"
#include "dialogs/CEdgeDlg.h"
#include "dialogs/CEmbossDlg.h"
#include "dialogs/CMosaicDlg.h"
#include "dialogs/CRescaleDlg.h"
#include "dialogs/CRotateDlg.h"
#include "dialogs/EraserOptionsDialog.h"
#include "dialogs/FillColorDialog.h"
#include "dialogs/FloodFillOptionsDialog.h"
#include "dialogs/GradientDialog.h"
#include "dialogs/HueOptionsDialog.h"
#include "dialogs/InputTextDialog.h"
#include "dialogs/MagicWandDialog.h"
#include "dialogs/NewImageDialog.h"
#include "dialogs/OptionsDialog.h"
#include "dialogs/PenShapeDialog.h"
#include "dialogs/ShapeOptionsDialog.h"
#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "ops/AdjustPreview.h"
#include "support/ImageFixtures.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QDialogButtonBox>
#include <QSpinBox>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace {

using Factory = std::function<std::unique_ptr<QDialog>()>;

struct NamedDialog {
    const char* name;
    Factory make;
};

class KeyboardAccessTest : public ::testing::Test {
protected:
    void SetUp() override { doc.SetPicture(MakeGradientImage(40, 30)); }

    std::vector<NamedDialog> AllDialogs() {
        return {
            {"Average", [] { return std::make_unique<CAverageDlg>(); }},
            {"Find Edge", [] { return std::make_unique<CEdgeDlg>(false); }},
            {"Trace Contour", [] { return std::make_unique<CEdgeDlg>(true); }},
            {"Emboss", [] { return std::make_unique<CEmbossDlg>(); }},
            {"Mosaic", [] { return std::make_unique<CMosaicDlg>(); }},
            {"Rotate", [] { return std::make_unique<CRotateDlg>(); }},
            {"Rescale", [this] { return std::make_unique<CRescaleDlg>(doc); }},
            {"Brightness/Contrast",
             [this] { return std::make_unique<CAdjustDlg>(kAdjustBrightnessContrast, ctx); }},
            {"Hue/Saturation", [this] { return std::make_unique<CAdjustDlg>(kAdjustHueSaturation, ctx); }},
            {"Gamma", [this] { return std::make_unique<CAdjustDlg>(kAdjustGamma, ctx); }},
            {"Eraser", [] { return std::make_unique<EraserOptionsDialog>(); }},
            {"Fill", [] { return std::make_unique<FillColorDialog>(0); }},
            {"Flood Fill", [] { return std::make_unique<FloodFillOptionsDialog>(); }},
            {"Gradient", [] { return std::make_unique<GradientDialog>(); }},
            {"Hue", [] { return std::make_unique<HueOptionsDialog>(); }},
            {"Magic Wand", [] { return std::make_unique<MagicWandDialog>(); }},
            {"New", [] { return std::make_unique<NewImageDialog>(NewImageValues{}); }},
            {"Options", [] { return std::make_unique<OptionsDialog>(OptionsValues{}); }},
            {"Pen", [] { return std::make_unique<PenShapeDialog>(8, 2); }},
            {"Shape", [] { return std::make_unique<ShapeOptionsDialog>(false); }},
            {"Text", [] { return std::make_unique<InputTextDialog>(TextFont::Read(), "Tamrick"); }},
        };
    }

    static void Show(QDialog& dialog) {
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
        QApplication::setActiveWindow(&dialog);
    }

    // The key goes where a person's key goes: to the control with the focus.
    static void Press(QDialog& dialog, Qt::Key key) {
        QWidget* target = dialog.focusWidget() != nullptr ? dialog.focusWidget() : &dialog;
        QTest::keyClick(target, key);
    }

    CBriselDoc doc;
    CUndoHistory undo;
    CommandContext ctx{doc, undo, 0x00204080, 0x00F0E0D0};
};

// Controls Tab stops at, in tab order, leaving out the parts of composite
// controls and the button row (whose order the platform decides).
std::vector<QWidget*> TabStops(QDialog& dialog) {
    std::vector<QWidget*> stops;
    for (QWidget* w = dialog.nextInFocusChain(); w != &dialog; w = w->nextInFocusChain()) {
        const bool part =
            qobject_cast<QAbstractSpinBox*>(w->parentWidget()) != nullptr || w->focusProxy() != nullptr;
        const bool inButtonRow = qobject_cast<QDialogButtonBox*>(w->parentWidget()) != nullptr;
        // Tab stops at the chosen button of a group of choices; arrows move inside it.
        auto* choice = qobject_cast<QAbstractButton*>(w);
        const bool unchosen = choice != nullptr && choice->autoExclusive() && !choice->isChecked();
        if ((w->focusPolicy() & Qt::TabFocus) && w->isVisibleTo(&dialog) && w->isEnabled() && !part &&
            !inButtonRow && !unchosen) {
            stops.push_back(w);
        }
    }
    return stops;
}

// True when `next` comes after `previous` when reading the dialog: on a later
// row, or on the same row further right.
bool ReadsAfter(QDialog& dialog, QWidget* previous, QWidget* next) {
    const QRect a(previous->mapTo(&dialog, QPoint(0, 0)), previous->size());
    const QRect b(next->mapTo(&dialog, QPoint(0, 0)), next->size());
    const bool sameRow = b.center().y() >= a.top() && b.center().y() <= a.bottom();
    return sameRow ? b.left() >= a.left() : b.top() >= a.center().y();
}

TEST_F(KeyboardAccessTest, TabFollowsTheLayoutAndNumbersFit) {
    for (const NamedDialog& entry : AllDialogs()) {
        SCOPED_TRACE(entry.name);
        const auto dialog = entry.make();
        Show(*dialog);
        const std::vector<QWidget*> stops = TabStops(*dialog);
        for (std::size_t i = 1; i < stops.size(); ++i) {
            EXPECT_TRUE(ReadsAfter(*dialog, stops[i - 1], stops[i]))
                << stops[i - 1]->metaObject()->className() << " before "
                << stops[i]->metaObject()->className();
        }
        for (QSpinBox* spin : dialog->findChildren<QSpinBox*>()) {
            EXPECT_GE(spin->width(), spin->sizeHint().width()) << spin->minimum() << ".." << spin->maximum();
        }
    }
}

TEST_F(KeyboardAccessTest, EnterIsOkAndEscIsCancel) {
    for (const NamedDialog& entry : AllDialogs()) {
        SCOPED_TRACE(entry.name);
        const auto accepted = entry.make();
        Show(*accepted);
        Press(*accepted, Qt::Key_Return);
        EXPECT_FALSE(accepted->isVisible());
        EXPECT_EQ(accepted->result(), QDialog::Accepted);

        const auto cancelled = entry.make();
        Show(*cancelled);
        Press(*cancelled, Qt::Key_Escape);
        EXPECT_FALSE(cancelled->isVisible());
        EXPECT_EQ(cancelled->result(), QDialog::Rejected);
    }
}

} // namespace
