#include "script/EngineOperations.h"
#include "image/CommandContext.h"
#include "image/DocumentFixture.h"
#include "image/ImageCoordinates.h"
#include "platform/StringTable.h"

#include <gtest/gtest.h>

namespace {

class EngineOperationsTest : public DocumentTest {
protected:
    void SetUp() override {
        DocumentTest::SetUp();
        doc.GetPicture()->Clear(0xFFFFFF);
    }
    int Run(const std::string& word) {
        EngineStep step;
        std::string error;
        EXPECT_TRUE(ParseEngineStep(word, step, error)) << error;
        return RunEngineStep(context, options, step);
    }
    bool Rejects(const std::string& word) {
        EngineStep step;
        std::string error;
        return !ParseEngineStep(word, step, error) && !error.empty();
    }

    CommandContext context{doc, undo, 0x0000FF, 0x00FF00};
    EngineOptions options;
};

} // namespace

TEST_F(EngineOperationsTest, WordsAndOptionsAreCheckedBeforeAnythingRuns) {
    for (const char* bad : {"fill", "fill=1", "fill=1,x", "pen=1,2;3", "pen=", "crop=1", "wand=1,2,both",
                            "rect=1,2,3,4,5,6", "brush=1", "fill-selection=grey", "paint=1,2"}) {
        EXPECT_TRUE(Rejects(bad)) << bad;
    }
    EXPECT_TRUE(IsEngineOperation("select-rect=1,2,3,4,sub"));
    EXPECT_FALSE(IsEngineOperation("blur"));

    std::string error;
    EXPECT_TRUE(ParseEngineOption("pen", "3,1", options, error));
    EXPECT_EQ(options.penSize, 3);
    EXPECT_TRUE(ParseEngineOption("gradient", "cone,hue-ccw", options, error));
    EXPECT_EQ(options.gradientShape, 3);
    EXPECT_EQ(options.gradientMode, 2);
    EXPECT_TRUE(ParseEngineOption("continuous", "0", options, error));
    EXPECT_FALSE(options.continuous);
    EXPECT_FALSE(ParseEngineOption("pen", "33,1", options, error));
    EXPECT_FALSE(ParseEngineOption("tolerance", "256", options, error));
    EXPECT_FALSE(ParseEngineOption("gradient", "spiral,rgb", options, error));
    EXPECT_FALSE(error.empty());
}

TEST_F(EngineOperationsTest, PaintingOperationsUseTheToolsAndLeaveUndoSteps) {
    options.penSize = 1;
    ASSERT_EQ(Run("pen=2,2;12,2"), 1);
    EXPECT_EQ(doc.GetPicture()->GetPixel(7, 2), 0x0000FFu);
    EXPECT_EQ(undo.Kind(), 1);
    EXPECT_EQ(Run("pen=30,2;1,1"), 0) << "a stroke must start inside the picture";

    ASSERT_EQ(Run("fill=0,9"), 1);
    EXPECT_EQ(doc.GetPicture()->GetPixel(19, 0), 0x0000FFu) << "the pen line does not wall the fill in";
    undo.Undo(doc);
    EXPECT_EQ(doc.GetPicture()->GetPixel(19, 0), 0xFFFFFFu);

    ASSERT_EQ(Run("eraser=7,2"), 1);
    EXPECT_EQ(doc.GetPicture()->GetPixel(7, 2), 0x00FF00u);
    ASSERT_EQ(Run("rect=0,4,19,9,2"), 1);
    EXPECT_EQ(doc.GetPicture()->GetPixel(10, 6), 0x0000FFu);
    ASSERT_EQ(Run("gradient=0,0,19,0"), 1);
    EXPECT_EQ(doc.GetPicture()->GetPixel(0, 5), 0x0000FFu);
    EXPECT_EQ(doc.GetPicture()->GetPixel(19, 5), 0x00FF00u);
    EXPECT_EQ(undo.Kind(), 1);
    ASSERT_EQ(Run("brush=3,5,5;15,5"), 1);
    EXPECT_EQ(Run("brush=9,5,5"), 0) << "there is no draw mode 9";
    ASSERT_EQ(Run("tablet=7,5,5;15,5"), 1);
}

TEST_F(EngineOperationsTest, SelectionOperationsAndPaintingInsideAFloatingSelection) {
    ASSERT_EQ(Run("select-rect=2,2,9,7"), 1);
    EXPECT_EQ(doc.GetFloatRect(), (ImageRect{2, 2, 10, 8}));
    ASSERT_EQ(Run("select-ellipse=8,2,15,7,add"), 1);
    EXPECT_EQ(doc.GetFloatRect(), (ImageRect{2, 2, 16, 8}));
    ASSERT_EQ(Run("select-rect=2,2,9,7,sub"), 1);
    EXPECT_EQ(doc.GetFloatRect().left, 10);

    ASSERT_EQ(Run("select-rect=2,2,9,7"), 1);
    options.penSize = 1;
    ASSERT_EQ(Run("pen=3,3"), 1) << "image coordinates land on the floating pixels";
    EXPECT_EQ(doc.GetFloatImage()->GetPixel(1, 1), 0x0000FFu);
    EXPECT_EQ(doc.GetPicture()->GetPixel(3, 3), 0xFFFFFFu);
    ASSERT_EQ(Run("move-floating=5,1"), 1);
    ASSERT_EQ(Run("put-floating"), 1);
    EXPECT_EQ(doc.GetPicture()->GetPixel(8, 4), 0x0000FFu);
    ASSERT_EQ(Run("fill-selection=white"), 1);
    ASSERT_EQ(Run("crop"), 1);
    EXPECT_EQ(doc.GetPicture()->Width(), 8);
    EXPECT_EQ(Run("crop"), 0) << "nothing selected any more";

    ASSERT_EQ(Run("wand=0,0"), 1);
    EXPECT_EQ(doc.GetFloatRect(), (ImageRect{0, 0, 8, 6}));
    ASSERT_EQ(Run("select-none"), 1);
    EXPECT_EQ(doc.GetFloatMask(), nullptr);
}

TEST_F(EngineOperationsTest, AGradientWithoutMemoryForItsCopyChangesNothing) {
    platform::HeapBlock::FailNextAllocations(1);
    EXPECT_EQ(Run("gradient=0,0,19,9"), 0);
    EXPECT_EQ(presenter.ShownIds().back(), platform::IDS_DISK_SPACE_NOT_ENOUGH);
    EXPECT_EQ(doc.GetPicture()->GetPixel(19, 9), 0xFFFFFFu);
    EXPECT_EQ(undo.Kind(), 0);
}

TEST_F(EngineOperationsTest, CoordinatesNearTheIntLimitsAreKeptInRangeAndCodesChecked) {
    // Codes are words or numbers of their range, never any number.
    for (const char* bad : {"fill-selection=7", "fill-selection=0", "rect=0,0,9,9,3", "ellipse=0,0,9,9,-1",
                            "select-rect=1,2,3,4,2", "wand=1,1,3", "brush=13,1,1", "fill=1,99999999999"}) {
        EXPECT_TRUE(Rejects(bad)) << bad;
    }
    EngineStep step;
    std::string error;
    ASSERT_TRUE(ParseEngineStep("pen=-2147483648,2147483647;0,0", step, error));
    EXPECT_EQ(step.points[0], (std::array<int, 2>{-kCoordinateLimit, kCoordinateLimit}));

    // Each engine draws the part inside the picture (20 x 10).
    ASSERT_EQ(Run("rect=-2147483648,-2147483648,2147483647,2147483647,2"), 1);
    EXPECT_EQ(doc.GetPicture()->GetPixel(19, 9), 0x0000FFu);
    ASSERT_EQ(Run("ellipse=-2147483647,-2147483647,2147483647,2147483647,1"), 1);
    EXPECT_EQ(doc.GetPicture()->GetPixel(10, 5), 0x00FF00u) << "inside the ring: background";
    ASSERT_EQ(Run("gradient=-2147483648,5,2147483647,5"), 1);
    ASSERT_EQ(Run("line=0,5,2147483647,2147483647"), 1);
    ASSERT_EQ(Run("eraser=0,0;2147483647,-2147483648"), 1);

    // Moves add up without overflowing; far away, the floating pixels are
    // put down nowhere.
    ASSERT_EQ(Run("fill-selection=white"), 1);
    ASSERT_EQ(Run("select-rect=2,2,5,5"), 1);
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(Run("move-floating=2147483647,-2147483648"), 1);
    }
    EXPECT_EQ(doc.FloatX(), kCoordinateLimit);
    EXPECT_EQ(doc.FloatY(), -kCoordinateLimit);
    ASSERT_EQ(Run("fill-selection=black"), 1);
    ASSERT_EQ(Run("put-floating"), 1);
    EXPECT_EQ(doc.GetPicture()->GetPixel(3, 3), 0xFFFFFFu);
}

TEST_F(EngineOperationsTest, EraseSimilarErasesOnlyColoursNearTheForeground) {
    // Foreground 0x0000FF; one pixel 20 away in red, one 21 away.
    doc.GetPicture()->SetPixel(5, 5, 0x0000FF);
    doc.GetPicture()->SetPixel(8, 5, 0x0000EB);
    doc.GetPicture()->SetPixel(11, 5, 0x0000EA);
    std::string error;
    ASSERT_TRUE(ParseEngineOption("erase-similar", "20", options, error));
    EXPECT_FALSE(ParseEngineOption("erase-similar", "256", options, error));
    EXPECT_FALSE(error.empty());
    options.penSize = 3;
    ASSERT_EQ(Run("eraser=2,5;15,5"), 1);
    EXPECT_EQ(doc.GetPicture()->GetPixel(5, 5), 0x00FF00u);
    EXPECT_EQ(doc.GetPicture()->GetPixel(8, 5), 0x00FF00u);
    EXPECT_EQ(doc.GetPicture()->GetPixel(11, 5), 0x0000EAu);
    EXPECT_EQ(doc.GetPicture()->GetPixel(6, 5), 0xFFFFFFu) << "white is far from the foreground";
    EXPECT_EQ(undo.Kind(), 1);
}

TEST_F(EngineOperationsTest, CloneCopiesInsideTheFloatingSelectionAsOneUndoStep) {
    doc.SetPicture(DuplicateImage(original.get()));
    EXPECT_TRUE(Rejects("clone=1,1")) << "a source alone is no stroke";
    ASSERT_EQ(Run("select-rect=2,2,13,7"), 1);
    const auto floatingBefore = DuplicateImage(doc.GetFloatImage());
    const auto pictureBefore = DuplicateImage(doc.GetPicture());
    options.penSize = 1;
    // Picture points: the pen from (8,3) to (10,3) copies (3,3)..(5,3); the
    // floating pixels start at (2,2).
    ASSERT_EQ(Run("clone=3,3;8,3;10,3"), 1);
    for (int x = 6; x <= 8; ++x) {
        EXPECT_EQ(doc.GetFloatImage()->GetPixel(x, 1), original->GetPixel(x - 5 + 2, 3)) << x;
    }
    EXPECT_EQ(doc.GetFloatImage()->GetPixel(9, 1), floatingBefore->GetPixel(9, 1));
    EXPECT_TRUE(SamePixels(*doc.GetPicture(), *pictureBefore)) << "the picture under it stays";

    const auto afterFirst = DuplicateImage(doc.GetFloatImage());
    // Sources left of the floating pixels leave their cells alone.
    ASSERT_EQ(Run("clone=0,4;4,4;5,4"), 1);
    EXPECT_TRUE(SamePixels(*doc.GetFloatImage(), *afterFirst));
    EXPECT_EQ(Run("clone=3,3;15,9"), 0) << "a stroke starting outside the floating pixels";

    ASSERT_TRUE(undo.Undo(doc));
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_TRUE(SamePixels(*doc.GetFloatImage(), *floatingBefore)) << "each stroke is one step";
}
