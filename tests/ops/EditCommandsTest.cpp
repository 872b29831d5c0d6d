#include "image/CommandContext.h"
#include "image/DocumentFixture.h"
#include "ops/ClipboardPayload.h"
#include "ops/EditCommandTable.h"
#include "platform/Settings.h"
#include "platform/StringTable.h"

#include <gtest/gtest.h>

namespace {

class EditCommandsTest : public DocumentTest {
protected:
    int Run(int id) {
        const EditCommand* command = FindEditCommand(id);
        EXPECT_NE(command, nullptr) << id;
        result = EditResult{};
        return command ? command->run(context, result) : 0;
    }
    // A floating selection of the 6 x 4 rectangle at (3, 2).
    void SelectRect() {
        doc.CreateFloating(3, 2, 8, 5, false);
        doc.SetFloatPosition(3, 2);
    }

    CommandContext context{doc, undo, 0x0000FF, 0x00FF00};
    EditResult result;
};

constexpr int kClear = 57632, kCrop = 32857, kFill = 32858, kSelectAll = 57642, kSelectNone = 32859,
              kInvert = 32860, kPut = 32861, kDiscard = 32862;

} // namespace

TEST_F(EditCommandsTest, TableEnablingRules) {
    EXPECT_EQ(EditCommands().size(), 8u);
    for (const EditCommand& command : EditCommands()) {
        const bool always = command.id == kFill || command.id == kSelectAll;
        EXPECT_EQ(IsEditCommandEnabled(command, &doc), always) << command.label;
        EXPECT_FALSE(IsEditCommandEnabled(command, nullptr));
    }
    SelectRect();
    for (const EditCommand& command : EditCommands()) {
        EXPECT_TRUE(IsEditCommandEnabled(command, &doc)) << command.label;
    }
}

TEST_F(EditCommandsTest, EachCommandRecordsItsUndoKindAndUndoes) {
    for (const EditCommand& command : EditCommands()) {
        doc.DeleteContents();
        doc.SetPicture(DuplicateImage(original.get()));
        doc.SetMask(CreateMask(20, 10, true));
        SelectRect();
        doc.GetFloatImage()->Clear(0x123456);
        undo.Empty();
        const ImageRect before = doc.GetFloatRect();
        ASSERT_EQ(command.run(context, result), 1) << command.label;
        EXPECT_EQ(undo.Kind(), command.undoKind) << command.label;
        ASSERT_TRUE(undo.Undo(doc)) << command.label;
        EXPECT_TRUE(SamePixels(*doc.GetPicture(), *original)) << command.label;
        EXPECT_EQ(doc.GetFloatRect(), before) << command.label;
        const bool redoable = command.undoKind != 4 && command.undoKind != 9;
        EXPECT_EQ(undo.CanRedo(&doc), redoable) << command.label;
    }
}

TEST_F(EditCommandsTest, ClearAndFillCoverTheWholeFloatingRectangle) {
    SelectRect();
    doc.GetFloatMask()->SetBit(0, 0, false);
    ASSERT_EQ(Run(kClear), 1);
    EXPECT_EQ(doc.GetFloatImage()->GetPixel(0, 0), 0x00FF00u);
    EXPECT_EQ(result.area, (ImageRect{3, 2, 8, 5}));
    EXPECT_TRUE(SamePixels(*doc.GetPicture(), *original)) << "the picture waits for the stamp";

    for (const auto& [choice, color] : {std::pair{0, 0x0000FFu}, {1, 0x00FF00u}, {2, 0xFFFFFFu}, {3, 0u}}) {
        platform::Settings::WriteInt("Edit", "FillColor", choice);
        ASSERT_EQ(Run(kFill), 1);
        EXPECT_EQ(doc.GetFloatImage()->GetPixel(5, 3), color) << choice;
    }
    doc.PutFloating(false);
    EXPECT_EQ(doc.GetPicture()->GetPixel(3, 2), original->GetPixel(3, 2)) << "masked-out pixel";
    EXPECT_EQ(doc.GetPicture()->GetPixel(4, 2), 0u);

    ASSERT_EQ(Run(kClear), 1) << "without a selection the whole picture";
    EXPECT_EQ(doc.GetPicture()->GetPixel(19, 9), 0x00FF00u);
    EXPECT_EQ(result.area, (ImageRect{0, 0, 19, 9}));
}

TEST_F(EditCommandsTest, CropKeepsTheBoundingRectangle) {
    SelectRect();
    doc.GetFloatMask()->SetBit(0, 0, false);
    ASSERT_EQ(Run(kCrop), 1);
    EXPECT_EQ(doc.GetPicture()->Width(), 6);
    EXPECT_EQ(doc.GetPicture()->Height(), 4);
    EXPECT_EQ(doc.GetPicture()->GetPixel(0, 0), original->GetPixel(3, 2));
    EXPECT_EQ(doc.GetFloatMask(), nullptr);
    EXPECT_EQ(doc.GetSelectionMask()->Width(), 6);
    EXPECT_TRUE(result.imageSizeChanged);
    EXPECT_FALSE(result.outline);
}

TEST_F(EditCommandsTest, SelectAllInvertAndNone) {
    ASSERT_EQ(Run(kInvert), 1);
    EXPECT_EQ(doc.GetFloatRect(), (ImageRect{0, 0, 20, 10})) << "inverting nothing selects everything";
    ASSERT_EQ(Run(kInvert), 1);
    EXPECT_EQ(doc.GetFloatMask(), nullptr) << "inverting everything leaves nothing";
    EXPECT_FALSE(result.outline);

    ASSERT_EQ(Run(kSelectAll), 1);
    EXPECT_EQ(doc.GetFloatRect(), (ImageRect{0, 0, 20, 10}));
    EXPECT_TRUE(result.outline);
    ASSERT_EQ(Run(kSelectNone), 1);
    EXPECT_EQ(doc.GetFloatMask(), nullptr);
    EXPECT_EQ(result.area, (ImageRect{0, 0, 19, 9}));

    SelectRect();
    ASSERT_EQ(Run(kInvert), 1);
    EXPECT_EQ(doc.GetFloatRect(), (ImageRect{0, 0, 20, 10}));
    EXPECT_EQ(doc.GetFloatMask()->GetBit(3, 2), 0);
    EXPECT_EQ(doc.GetFloatMask()->GetBit(2, 2), 1);
    ImageRect workBits;
    EXPECT_FALSE(FindSetBitsBounds(*doc.GetSelectionMask(), workBits)) << "the work mask is left empty";
}

TEST_F(EditCommandsTest, PutDiscardAndMoveFloating) {
    SelectRect();
    doc.GetFloatImage()->Clear(0x111111);
    ASSERT_EQ(Run(kPut), 1);
    EXPECT_EQ(doc.GetPicture()->GetPixel(3, 2), 0x111111u);
    EXPECT_NE(doc.GetFloatMask(), nullptr) << "the selection stays floating";

    ASSERT_EQ(EditMoveFloating(context, 4, -1, result), 1);
    EXPECT_EQ(undo.Kind(), 3);
    EXPECT_EQ(doc.GetFloatRect(), (ImageRect{7, 1, 13, 5}));
    EXPECT_EQ(result.area, (ImageRect{3, 1, 12, 5}));
    undo.Undo(doc);
    EXPECT_EQ(doc.FloatX(), 3);
    undo.Redo(doc);
    EXPECT_EQ(doc.FloatX(), 7);

    ASSERT_EQ(Run(kDiscard), 1);
    EXPECT_EQ(doc.GetFloatMask(), nullptr);
    EXPECT_EQ(undo.NewestStep()->SavedFloatImage()->GetPixel(0, 0), 0x111111u);
}

TEST_F(EditCommandsTest, ClipboardPayloadRoundTripAndRefusal) {
    ClipboardPayload whole;
    ASSERT_EQ(PackClipboardPayload(doc, whole), 1);
    EXPECT_FALSE(whole.mask) << "no selection, no mask";
    std::unique_ptr<CDibImage> image;
    std::unique_ptr<CDibImage> mask;
    ASSERT_EQ(UnpackClipboardPayload(whole.picture.data(), whole.picture.size(), nullptr, 0, image, mask), 1);
    EXPECT_TRUE(SamePixels(*image, *original));
    EXPECT_EQ(mask->GetBit(19, 9), 1) << "a full mask of the pasted size";

    SelectRect();
    doc.GetFloatMask()->SetBit(1, 1, false);
    ClipboardPayload selection;
    ASSERT_EQ(PackClipboardPayload(doc, selection), 1);
    ASSERT_EQ(UnpackClipboardPayload(selection.picture.data(), selection.picture.size(),
                                     selection.mask.data(), selection.mask.size(), image, mask),
              1);
    EXPECT_EQ(image->Width(), 6);
    EXPECT_EQ(mask->GetBit(1, 1), 0);
    ASSERT_EQ(EditPasteFloating(context, std::move(image), std::move(mask), 10, 5, result), 1);
    EXPECT_EQ(doc.GetFloatRect(), (ImageRect{10, 5, 16, 9}));
    EXPECT_EQ(doc.GetPicture()->GetPixel(3, 2), original->GetPixel(3, 2));

    // A mask block is not a true-colour picture: refused with its message.
    EXPECT_EQ(UnpackClipboardPayload(selection.mask.data(), selection.mask.size(), nullptr, 0, image, mask),
              0);
    EXPECT_EQ(presenter.ShownIds().back(), platform::IDS_PASTE_TRUE_COLOR_ONLY);
    EXPECT_EQ(image, nullptr);

    platform::HeapBlock::FailNextAllocations(1);
    ClipboardPayload failed;
    EXPECT_EQ(PackClipboardPayload(doc, failed), 0);
    EXPECT_EQ(presenter.ShownIds().back(), platform::IDS_MEMORY_NOT_ENOUGH);
}

TEST_F(EditCommandsTest, PasteAsNewLeavesEverythingAsItWasWhenMemoryIsShort) {
    SelectRect();
    ASSERT_EQ(Run(kClear), 1);
    auto image = DuplicateImage(original.get());
    auto mask = CreateMask(20, 10, false);
    for (const int skip : {0, 4}) { // the empty mask's first block, then the floating copy's
        platform::HeapBlock::FailNextAllocations(1, skip);
        EXPECT_EQ(EditPasteAsNew(context, std::move(image), std::move(mask), result), 0);
        EXPECT_EQ(presenter.ShownIds().back(), platform::IDS_MEMORY_NOT_ENOUGH);
        EXPECT_EQ(doc.GetFloatRect(), (ImageRect{3, 2, 9, 6}));
        EXPECT_EQ(undo.Kind(), 1) << "the undo step is kept";
        image = DuplicateImage(original.get());
        mask = CreateMask(20, 10, false);
    }
}
