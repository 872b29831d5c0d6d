#include "tools/select/AToolSelectMagic.h"
#include "dialogs/MagicWandDialog.h"
#include "dialogs/NumberTriple.h"
#include "platform/Settings.h"
#include "selection/MagicWand.h"
#include "tools/select/SelectToolFixture.h"

#include <QCheckBox>
#include <QLineEdit>

namespace {

using AToolSelectMagicTest = SelectToolTest;

constexpr ColorWord kGrey = MakeColorWord(100, 100, 100);
constexpr ColorWord kNear = MakeColorWord(120, 100, 100);

// A grey picture with a slightly redder column band at x = 10..12 cutting it
// into a left and a right part.
std::unique_ptr<CDibImage> BandedPicture() {
    auto picture = MakeImage(40, 20);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 40; ++x) {
            picture->SetPixel(x, y, x >= 10 && x <= 12 ? kNear : kGrey);
        }
    }
    return picture;
}

void SetWand(int tolerance, bool continuous) {
    WandSettings settings;
    settings.tolerance = tolerance;
    settings.continuous = continuous;
    settings.Write();
}

TEST_F(AToolSelectMagicTest, ToleranceAndContinuityDecideTheArea) {
    Open<AToolSelectMagic>(BandedPicture());
    SetWand(10, true);
    Tap({2, 2});
    EXPECT_EQ(Selection(), (ImageRect{0, 0, 10, 20}));
    EXPECT_EQ(host.undo.Kind(), 5);
    EXPECT_TRUE(view.OutlineTimerActive());

    // The whole picture when not continuous: both grey parts, not the band.
    SetWand(10, false);
    Tap({30, 2});
    EXPECT_EQ(Selection(), (ImageRect{0, 0, 40, 20}));
    EXPECT_FALSE(Selected(11, 5));

    // A tolerance that reaches the band's red takes everything connected.
    SetWand(20, true);
    host.doc.PutFloating(false);
    Tap({30, 2});
    EXPECT_EQ(Selection(), (ImageRect{0, 0, 40, 20}));
    EXPECT_TRUE(Selected(11, 5));
}

TEST_F(AToolSelectMagicTest, ShiftAddsCtrlSubtractsAndTapsBesideThePictureAreIgnored) {
    Open<AToolSelectMagic>(BandedPicture());
    SetWand(0, true);
    Tap({11, 3});
    EXPECT_EQ(Selection(), (ImageRect{10, 0, 13, 20}));
    Tap({30, 3}, Qt::ShiftModifier);
    EXPECT_EQ(Selection(), (ImageRect{10, 0, 40, 20}));
    EXPECT_TRUE(Selected(11, 3));
    EXPECT_TRUE(Selected(35, 3));
    EXPECT_FALSE(Selected(5, 3));
    Tap({11, 3}, Qt::ControlModifier);
    EXPECT_EQ(Selection(), (ImageRect{13, 0, 40, 20}));

    host.undo.Empty();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, Screen({0, 0}) - QPoint(3, 3));
    EXPECT_EQ(host.undo.Kind(), 0);
    EXPECT_EQ(Selection(), (ImageRect{13, 0, 40, 20}));
}

TEST_F(AToolSelectMagicTest, OptionsDialogAcceptsOnlyWholeNumbersInRange) {
    SetWand(32, true);
    MagicWandDialog dialog;
    EXPECT_EQ(dialog.windowTitle(), "Magic Wand Options");
    QLineEdit* edit = dialog.Similarity()->Edit();
    EXPECT_EQ(edit->text(), "32");
    EXPECT_EQ(edit->selectedText(), "32");
    EXPECT_TRUE(dialog.Continuous()->isChecked());

    for (const char* bad : {"256", "-1", "12.5", "ab"}) {
        edit->setText(bad);
        edit->deselect();
        dialog.accept();
        EXPECT_EQ(dialog.result(), QDialog::Rejected) << bad;
        EXPECT_EQ(edit->selectedText(), bad);
        EXPECT_EQ(platform::Settings::ReadInt("MagicWand", "Tolerance", -1), 32);
    }
    edit->setText("255");
    dialog.Continuous()->setChecked(false);
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(platform::Settings::ReadInt("MagicWand", "Tolerance", -1), 255);
    EXPECT_EQ(platform::Settings::ReadInt("MagicWand", "Continuous", -1), 0);
}

} // namespace
