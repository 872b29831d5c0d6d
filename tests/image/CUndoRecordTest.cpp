#include "image/DocumentFixture.h"

namespace {

class UndoTest : public DocumentTest {
protected:
    // Undo, Redo and Undo again; the picture must match `before` after each
    // undo and `after` after the redo.
    void ExpectUndoRedoUndo(const CDibImage& before, const CDibImage& after) {
        ASSERT_TRUE(record.CanUndo(&doc));
        record.Swap(doc);
        EXPECT_TRUE(SamePixels(*doc.GetPicture(), before));
        ASSERT_TRUE(record.CanRedo(&doc));
        record.Swap(doc);
        EXPECT_TRUE(SamePixels(*doc.GetPicture(), after));
        record.Swap(doc);
        EXPECT_TRUE(SamePixels(*doc.GetPicture(), before));
    }

    void FloatRectangle(int x0, int y0, int x1, int y1) {
        ASSERT_EQ(doc.CreateFloating(x0, y0, x1, y1, false), 1);
        doc.SetFloatPosition(x0, y0);
    }

    CUndoRecord record;
};

TEST_F(UndoTest, PaintingStepSwapsTheEditingTarget) {
    ASSERT_EQ(record.Record(doc, 1), 1);
    Paint(*doc.GetPicture(), 0x00112233);
    auto painted = DuplicateImage(doc.GetPicture());
    ExpectUndoRedoUndo(*original, *painted);
    EXPECT_FALSE(record.CanUndo(nullptr));
    int updates = 0;
    doc.AddViewObserver([&](int hint) { updates += hint == CBriselDoc::kHintImageSize; });
    EXPECT_FALSE(record.Undo(doc)); // after undo, redo, undo only Redo is offered
    EXPECT_TRUE(record.Redo(doc));
    EXPECT_TRUE(SamePixels(*doc.GetPicture(), *painted));
    EXPECT_EQ(updates, 1);
    CBriselDoc other;
    EXPECT_FALSE(record.CanRedo(&other));
}

TEST_F(UndoTest, FailedSnapshotEmptiesTheRecord) {
    ASSERT_EQ(record.Record(doc, 1), 1);
    platform::HeapBlock::FailNextAllocations(1);
    EXPECT_EQ(record.Record(doc, 1), 0);
    EXPECT_EQ(record.Kind(), 0);
    EXPECT_FALSE(record.CanUndo(&doc));
    EXPECT_EQ(record.SavedImage(), nullptr);
    platform::HeapBlock::FailNextAllocations(1);
    EXPECT_EQ(record.RecordWithWarning(doc, 1), 0);
    EXPECT_EQ(presenter.ShownIds(), std::vector<int>{32});
    EXPECT_FALSE(record.Undo(doc));

    // A selection step whose floating copy fails keeps nothing at all: the
    // picture copy (header and pixels) goes through, the floating copy does not.
    FloatRectangle(1, 1, 4, 4);
    platform::HeapBlock::FailNextAllocations(1, 2);
    EXPECT_EQ(record.Record(doc, 5), 0);
    EXPECT_EQ(record.SavedImage(), nullptr);
    EXPECT_EQ(record.SavedFloatImage(), nullptr);
    EXPECT_FALSE(record.CanUndo(&doc));
}

TEST_F(UndoTest, ResolutionStepSwapsTheValue) {
    const int old = doc.SetResolution(200);
    record.RecordObjects(doc, nullptr, nullptr, 2, static_cast<std::uint16_t>(old));
    ASSERT_TRUE(record.CanUndo(&doc));
    record.Swap(doc);
    EXPECT_EQ(doc.GetPicture()->DpiX(), 72);
    record.Swap(doc);
    EXPECT_EQ(doc.GetPicture()->DpiY(), 200);

    record.RecordObjects(doc, nullptr, nullptr, 1, 0);
    EXPECT_EQ(record.Kind(), 0); // no image for an image step: nothing to undo
}

TEST_F(UndoTest, MovingTheFloatingSelectionIsUndoneAndRedone) {
    FloatRectangle(2, 2, 5, 5);
    ASSERT_EQ(record.Record(doc, 3), 1);
    doc.SetFloatPosition(9, 4);
    record.Swap(doc);
    EXPECT_EQ(doc.GetFloatRect(), (ImageRect{2, 2, 6, 6}));
    record.Swap(doc);
    EXPECT_EQ(doc.GetFloatRect(), (ImageRect{9, 4, 13, 8}));
}

TEST_F(UndoTest, PutFloatingCannotBeRedone) {
    FloatRectangle(15, 6, 24, 12); // partly outside
    Paint(*doc.GetFloatImage(), 0x00010203);
    ASSERT_EQ(record.Record(doc, 4), 1);
    doc.PutFloating(true);
    record.Swap(doc);
    EXPECT_TRUE(SamePixels(*doc.GetPicture(), *original));
    EXPECT_EQ(doc.GetFloatImage()->GetPixel(0, 0), 0x00010203u); // the real floating pixels are back
    EXPECT_FALSE(record.CanRedo(&doc));
    EXPECT_EQ(record.SavedImage(), nullptr);
}

TEST_F(UndoTest, SelectionStepsRestorePictureAndFloatingState) {
    // Select All over a picture with no selection (kind 5), then Select None (kind 7).
    ASSERT_EQ(record.Record(doc, 5), 1);
    FloatRectangle(0, 0, 19, 9);
    record.Swap(doc);
    EXPECT_FALSE(doc.GetFloatImage());
    record.Swap(doc);
    ASSERT_TRUE(doc.GetFloatImage());
    EXPECT_EQ(doc.GetFloatMask()->Width(), 20);

    doc.SetFloatPosition(3, 1);
    Paint(*doc.GetFloatImage(), 0x00445566);
    ASSERT_EQ(record.Record(doc, 7), 1);
    doc.PutFloating(false);
    auto stamped = DuplicateImage(doc.GetPicture());
    ExpectUndoRedoUndo(*original, *stamped);
    EXPECT_EQ(doc.FloatX(), 3);
    EXPECT_EQ(doc.GetFloatImage()->GetPixel(5, 5), 0x00445566u);
}

TEST_F(UndoTest, DiscardFloatingGivesTheSelectionToTheRecord) {
    FloatRectangle(4, 4, 8, 8);
    CDibImage* floating = doc.GetFloatImage();
    ASSERT_EQ(record.Record(doc, 6), 1);
    doc.DiscardFloating();
    EXPECT_EQ(record.SavedFloatImage(), floating); // taken, not copied
    EXPECT_FALSE(doc.GetFloatImage());
    record.Swap(doc);
    EXPECT_EQ(doc.GetFloatImage(), floating);
    EXPECT_EQ(doc.FloatX(), 4);
    record.Swap(doc);
    EXPECT_FALSE(doc.GetFloatMask());
}

TEST_F(UndoTest, LiftingForTheMoveToolSwapsPictureAndFloatingImage) {
    FloatRectangle(1, 1, 3, 3);
    Paint(*doc.GetFloatImage(), 0x00778899);
    ASSERT_EQ(record.Record(doc, 8), 1);
    doc.PutFloating(true);
    auto stamped = DuplicateImage(doc.GetPicture());
    record.AdoptFloatImage(doc.SetFloatImage(doc.CopyPictureRect(10, 5, 12, 7)));
    doc.SetFloatPosition(10, 5);
    ExpectUndoRedoUndo(*original, *stamped);
    EXPECT_EQ(doc.FloatX(), 1);
    EXPECT_EQ(doc.GetFloatImage()->GetPixel(0, 0), 0x00778899u);
}

TEST_F(UndoTest, CropCannotBeRedone) {
    FloatRectangle(5, 2, 9, 6);
    ASSERT_EQ(record.Record(doc, 9), 1);
    EXPECT_FALSE(doc.GetPicture());
    doc.SetPicture(doc.SetFloatImage(nullptr));
    doc.SetMask(CreateMask(5, 5, true));
    doc.SetFloatPosition(0, 0);
    record.Swap(doc);
    EXPECT_TRUE(SamePixels(*doc.GetPicture(), *original));
    EXPECT_EQ(doc.GetFloatImage()->Width(), 5);
    EXPECT_EQ(doc.GetSelectionMask()->Width(), 20);
    EXPECT_EQ(doc.FloatX(), 5);
    EXPECT_FALSE(record.CanRedo(&doc));
}

TEST_F(UndoTest, ImageAndMaskStepSwapsBothAndThePosition) {
    FloatRectangle(0, 0, 3, 1); // 4 x 2
    // A quarter turn of the selection: new 2 x 4 pixels and mask, moved.
    auto turned = MakeImage(2, 4);
    std::unique_ptr<CDibImage> oldImage = doc.SetImage(std::move(turned));
    std::unique_ptr<CDibImage> oldMask = doc.SetFloatMask(CreateMask(2, 4, false));
    record.RecordObjects(doc, std::move(oldImage), std::move(oldMask), 10, 0);
    record.SetPosition(0, 0);
    doc.SetFloatPosition(1, -1);
    record.Swap(doc);
    EXPECT_EQ(doc.GetFloatImage()->Width(), 4);
    EXPECT_EQ(doc.GetFloatMask()->Height(), 2);
    EXPECT_EQ(doc.FloatY(), 0);
    record.Swap(doc);
    EXPECT_EQ(doc.GetFloatImage()->Width(), 2);
    EXPECT_EQ(doc.FloatY(), -1);
}

} // namespace
