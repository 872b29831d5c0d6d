#include "app/AppTestSupport.h"
#include "dialogs/EraserOptionsDialog.h"
#include "dialogs/FloodFillOptionsDialog.h"
#include "dialogs/GradientDialog.h"
#include "dialogs/NumberTriple.h"
#include "dialogs/PenShapeDialog.h"
#include "dialogs/ShapeOptionsDialog.h"
#include "platform/Settings.h"
#include "support/ScriptedPresenter.h"
#include "tools/ToolTable.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <gtest/gtest.h>

namespace {

using platform::Settings;

TEST(PaintDialogs, EraserOptionsEnableTheSimilarityForForegroundOnlyAndRefuseOutOfRange) {
    Settings::WriteInt("Eraser", "Eraser Type", 0);
    Settings::WriteInt("Eraser", "Red", 0);
    ScriptedPresenter presenter;
    EraserOptionsDialog dialog;
    dialog.show();
    EXPECT_TRUE(dialog.AllColors()->isChecked());
    EXPECT_FALSE(dialog.Similarity()->isEnabled());
    dialog.ForegroundOnly()->setChecked(true);
    EXPECT_TRUE(dialog.Similarity()->isEnabled());

    dialog.Similarity()->SetValue(256);
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(presenter.ShownIds(), std::vector<int>{33210});
    EXPECT_EQ(Settings::ReadInt("Eraser", "Eraser Type", -1), 0);

    dialog.Similarity()->SetValue(40);
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(Settings::ReadInt("Eraser", "Eraser Type", -1), 1);
    EXPECT_EQ(Settings::ReadInt("Eraser", "Red", -1), 40);

    EraserOptionsDialog again;
    EXPECT_TRUE(again.ForegroundOnly()->isChecked());
    EXPECT_EQ(again.Similarity()->Value(), 40);
}

TEST(PaintDialogs, ToolOptionsKeepRectangleAndEllipseApart) {
    Settings::WriteInt("PaintRect", "DrawStyle", 1);
    Settings::WriteInt("PaintRect", "DrawFromCenter", 0);
    ShapeOptionsDialog ellipse(true);
    ASSERT_EQ(ellipse.Styles()->buttons().size(), 3);
    ellipse.Styles()->button(2)->click();
    ellipse.FromCenter()->setChecked(true);
    ellipse.accept();
    EXPECT_EQ(Settings::ReadInt("PaintOval", "DrawStyle", -1), 2);
    EXPECT_EQ(Settings::ReadInt("PaintOval", "DrawFromCenter", -1), 1);
    EXPECT_EQ(Settings::ReadInt("PaintRect", "DrawStyle", -1), 1);

    ShapeOptionsDialog rectangle(false);
    EXPECT_EQ(rectangle.DrawStyle(), 1);
    EXPECT_FALSE(rectangle.FromCenter()->isChecked());
}

TEST(PaintDialogs, ToolTableOpensTheRightDialogs) {
    EXPECT_FALSE(tools::HasToolOptions(33008));
    EXPECT_FALSE(tools::HasToolOptions(33009));
    const std::pair<int, const char*> dialogs[] = {{33006, "Tool Options"},
                                                   {33007, "Tool Options"},
                                                   {33010, "Eraser Options"},
                                                   {33017, "Hue Options"},
                                                   {33025, "Flood Fill Options"},
                                                   {33026, "Gradient Dialog"}};
    for (const auto& [id, title] : dialogs) {
        QString shown;
        WithNextDialog([&shown](QDialog* dialog) {
            shown = dialog ? dialog->windowTitle() : QString();
            if (dialog) {
                dialog->reject();
            }
        });
        EXPECT_TRUE(tools::OpenToolOptions(id, nullptr));
        EXPECT_EQ(shown.toStdString(), title);
    }
}

TEST(PaintDialogs, FloodFillAndGradientStoreTheirChoices) {
    Settings::WriteInt("FloodFill", "Tolerance", 32);
    FloodFillOptionsDialog fill;
    EXPECT_EQ(fill.Similarity()->Value(), 32);
    fill.Similarity()->SetValue(0);
    fill.accept();
    EXPECT_EQ(Settings::ReadInt("FloodFill", "Tolerance", -1), 0);

    GradientDialog gradient;
    ASSERT_EQ(gradient.ColorMode()->count(), 3);
    ASSERT_EQ(gradient.Shape()->count(), 4);
    EXPECT_EQ(gradient.ColorMode()->itemText(2), "Hue, CCW");
    EXPECT_EQ(gradient.Shape()->itemText(3), "Cone");
    gradient.ColorMode()->setCurrentIndex(1);
    gradient.Shape()->setCurrentIndex(3);
    gradient.accept();
    EXPECT_EQ(Settings::ReadInt("Gradient", "ColorMode", -1), 1);
    EXPECT_EQ(Settings::ReadInt("Gradient", "Shape", -1), 3);
}

TEST(PaintDialogs, PenShapeAndSizeRefusesSizesBeyondThePen) {
    ScriptedPresenter presenter;
    PenShapeDialog dialog(8, 2);
    EXPECT_EQ(dialog.Shape()->currentText(), "Oval");
    dialog.Size()->SetValue(33);
    dialog.accept();
    EXPECT_EQ(presenter.ShownIds(), std::vector<int>{33211});
    dialog.Size()->SetValue(12);
    dialog.Shape()->setCurrentIndex(5);
    dialog.accept();
    EXPECT_EQ(Settings::ReadInt("ToolSection", "PenSize", -1), 12);
    EXPECT_EQ(Settings::ReadInt("ToolSection", "PenShape", -1), 6);
}

} // namespace
