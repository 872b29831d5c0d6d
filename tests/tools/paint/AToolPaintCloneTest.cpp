#include "tools/paint/AToolPaintClone.h"
#include "ToolTestSupport.h"
#include "dialogs/CloneOptionsDialog.h"
#include "script/EngineOperations.h"

#include <QCheckBox>
#include <QTest>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::unique_ptr<CDibImage> MakeTexture(int width, int height) {
    return MakeNoiseImage(width, height, 4242u);
}

class CloneToolTest : public ToolWindowTest {
protected:
    void SetUp() override {
        Open(40, 30);
        host.doc.SetPicture(MakeTexture(40, 30));
        start = DuplicateImage(&Picture());
        SetAligned(true);
        UseTool(tools::kCloneStamp);
    }
    // Through the options dialog, as the user sets it.
    static void SetAligned(bool aligned) {
        CloneOptionsDialog dialog;
        dialog.Aligned()->setChecked(aligned);
        dialog.accept();
    }
    AToolPaintClone& Tool() { return static_cast<AToolPaintClone&>(View()); }
    void SetSource(int x, int y) {
        Press(x, y, Qt::ControlModifier);
        Release(x, y, Qt::ControlModifier);
    }
    void Stroke(const std::vector<QPoint>& points) {
        Press(points[0].x(), points[0].y());
        for (std::size_t i = 1; i < points.size(); ++i) {
            MoveTo(points[i].x(), points[i].y());
        }
        Release(points.back().x(), points.back().y());
    }
    // The start picture with the command-line words run on it.
    std::unique_ptr<CDibImage> ByCommandLine(const std::vector<std::string>& words) {
        CBriselDoc doc;
        doc.SetPicture(DuplicateImage(start.get()));
        doc.SetMask(CreateMask(40, 30, false));
        CUndoHistory undo;
        CommandContext context{doc, undo, host.foreground, host.background};
        EngineOptions options;
        options.penSize = host.penSize;
        options.penShape = host.penShape;
        for (const std::string& word : words) {
            EngineStep step;
            std::string error;
            EXPECT_TRUE(ParseEngineStep(word, step, error)) << error;
            EXPECT_EQ(RunEngineStep(context, options, step), 1) << word;
        }
        return DuplicateImage(doc.GetPicture());
    }

    std::unique_ptr<CDibImage> start;
};

} // namespace

TEST_F(CloneToolTest, AlignedStrokesPaintWhatTheCommandLinePaintsOneUndoStepEach) {
    EXPECT_TRUE(CloneOptionsDialog::ReadAligned());
    SetSource(5, 5);
    ASSERT_TRUE(Tool().Crosshair().has_value());
    EXPECT_EQ(*Tool().Crosshair(), QPoint(5, 5));
    EXPECT_TRUE(SamePixels(Picture(), *start)) << "setting the source paints nothing";

    Stroke({{20, 12}, {28, 12}, {28, 20}});
    EXPECT_EQ(*Tool().Crosshair(), QPoint(13, 13)) << "the crosshair moved along with the pen";
    const auto afterFirst = DuplicateImage(&Picture());
    EXPECT_FALSE(SamePixels(*afterFirst, *start));
    // Aligned: the second stroke keeps the offset (15, 7), so its source
    // starts left of the picture.
    Stroke({{10, 25}, {16, 25}, {16, 28}});
    EXPECT_TRUE(SamePixels(Picture(),
                           *ByCommandLine({"clone=5,5;20,12;28,12;28,20", "clone=-5,18;10,25;16,25;16,28"})));

    ASSERT_TRUE(host.undo.Undo(host.doc));
    EXPECT_TRUE(SamePixels(Picture(), *afterFirst));
    ASSERT_TRUE(host.undo.Undo(host.doc));
    EXPECT_TRUE(SamePixels(Picture(), *start));
}

TEST_F(CloneToolTest, NotAlignedEveryStrokeStartsFromTheSource) {
    SetAligned(false);
    EXPECT_FALSE(CloneOptionsDialog().Aligned()->isChecked()) << "the option is kept";
    SetSource(6, 4);
    Stroke({{22, 8}, {30, 8}});
    EXPECT_EQ(*Tool().Crosshair(), QPoint(6, 4)) << "back at the source for the next stroke";
    Stroke({{12, 22}, {20, 26}});
    EXPECT_TRUE(SamePixels(Picture(), *ByCommandLine({"clone=6,4;22,8;30,8", "clone=6,4;12,22;20,26"})));
}

TEST_F(CloneToolTest, WithoutASourceAStrokePaintsNothingAndLeavesNoStep) {
    Stroke({{10, 10}, {20, 10}});
    EXPECT_FALSE(Tool().Crosshair().has_value());
    EXPECT_TRUE(SamePixels(Picture(), *start));
    EXPECT_FALSE(host.undo.Undo(host.doc));
}

TEST_F(CloneToolTest, SettingTheSourceKeepsTheFloatingSelectionAndStrokesPaintIntoIt) {
    CommandContext context = host.EditingContext();
    EngineStep step;
    std::string error;
    ASSERT_TRUE(ParseEngineStep("select-rect=10,10,29,24", step, error));
    ASSERT_EQ(RunEngineStep(context, EngineOptions{}, step), 1);
    const auto floating = DuplicateImage(host.doc.GetFloatImage());
    const auto picture = DuplicateImage(&Picture());

    SetSource(2, 2);
    ASSERT_NE(host.doc.GetFloatImage(), nullptr) << "a Ctrl+click outside does not put it down";
    SetSource(12, 12);
    Stroke({{20, 18}, {25, 18}});
    EXPECT_TRUE(SamePixels(Picture(), *picture));
    // Floating pixel (x, y) is picture pixel (x + 10, y + 10); offset (8, 6).
    EXPECT_EQ(host.doc.GetFloatImage()->GetPixel(12, 8), floating->GetPixel(4, 2));
    EXPECT_EQ(host.doc.GetFloatImage()->GetPixel(0, 0), floating->GetPixel(0, 0));
}
