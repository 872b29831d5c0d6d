#include "ops/ImageCommands.h"
#include "image/DocumentFixture.h"
#include "ops/AdjustPreview.h"
#include "ops/OpsCommandTable.h"
#include "ops/OpsTestImages.h"

#include <set>
#include <string>

namespace {

class ImageCommandsTest : public DocumentTest {
protected:
    CommandContext ctx{doc, undo};

    void FloatRectangle(int x0, int y0, int x1, int y1) {
        ASSERT_EQ(doc.CreateFloating(x0, y0, x1, y1, false), 1);
        doc.SetFloatPosition(x0, y0);
    }
};

TEST_F(ImageCommandsTest, TheTableHoldsEachCommandOnce) {
    std::set<int> ids;
    std::set<std::string> names;
    for (const OpsCommand& command : OpsCommands()) {
        EXPECT_TRUE(ids.insert(command.id).second) << command.id;
        EXPECT_TRUE(names.insert(command.cliName).second) << command.cliName;
        EXPECT_EQ(FindOpsCommand(command.id), &command);
        EXPECT_EQ(FindOpsCommandByName(command.cliName), &command);
    }
    EXPECT_EQ(ids.size(), 38u);
}

// Every command runs from the table with its dialog's defaults, leaves one
// undo step, and Undo brings the picture back.
TEST_F(ImageCommandsTest, EveryCommandRunsAndUndoes) {
    for (const OpsCommand& command : OpsCommands()) {
        SCOPED_TRACE(command.cliName);
        doc.SetPicture(DuplicateImage(original.get()));
        undo.Empty();
        ASSERT_EQ(RunOpsCommand(ctx, command), 1);
        if (command.id == 32797) { // Rescale to the same size changes nothing
            EXPECT_EQ(undo.Kind(), 0);
            continue;
        }
        const bool newShape = command.id == 32798 || command.id == 32799 || command.id == 32829;
        EXPECT_EQ(undo.Kind(), newShape ? 10 : 1);
        EXPECT_TRUE(doc.IsModified());
        ASSERT_TRUE(undo.Undo(doc));
        EXPECT_TRUE(SamePixels(*doc.GetPicture(), *original));
    }
}

TEST_F(ImageCommandsTest, AFloatingSelectionIsFilteredAlone) {
    FloatRectangle(2, 1, 9, 6);
    auto floating = DuplicateImage(doc.GetFloatImage());
    ASSERT_EQ(RunImageCommand(ctx, kInvert), 1);
    EXPECT_TRUE(SamePixels(*doc.GetPicture(), *original));
    EXPECT_EQ(doc.GetFloatImage()->GetPixel(0, 0), ~floating->GetPixel(0, 0) & 0xFFFFFF);
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_TRUE(SamePixels(*doc.GetFloatImage(), *floating));

    ASSERT_EQ(RunGeometryCommand(ctx, kFlipHorizontal), 1);
    EXPECT_EQ(undo.Kind(), 10);
    EXPECT_EQ(doc.FloatX(), 2);
    EXPECT_EQ(doc.GetFloatImage()->GetPixel(0, 0), floating->GetPixel(7, 0));
    EXPECT_TRUE(SamePixels(*doc.GetPicture(), *original));
}

TEST_F(ImageCommandsTest, QuarterTurnSwapsTheMaskAndUndoRestoresIt) {
    doc.GetSelectionMask()->SetBit(3, 4, true);
    auto mask = DuplicateImage(doc.GetSelectionMask());
    ASSERT_EQ(RunGeometryCommand(ctx, kRotateRight), 1);
    EXPECT_EQ(doc.GetPicture()->Width(), 10);
    EXPECT_EQ(doc.GetSelectionMask()->Width(), 10);
    EXPECT_EQ(doc.GetSelectionMask()->Height(), 20);
    EXPECT_FALSE(doc.GetSelectionMask()->GetBit(5, 3));
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_TRUE(SamePixels(*doc.GetPicture(), *original));
    EXPECT_TRUE(SamePixels(*doc.GetSelectionMask(), *mask));

    // A floating selection turns with its own mask.
    FloatRectangle(0, 0, 4, 1);
    doc.GetFloatMask()->SetBit(4, 0, false);
    ASSERT_EQ(RunGeometryCommand(ctx, kRotateLeft), 1);
    EXPECT_EQ(doc.GetFloatMask()->Width(), 2);
    EXPECT_EQ(doc.GetFloatMask()->Height(), 5);
    EXPECT_FALSE(doc.GetFloatMask()->GetBit(0, 0));
    EXPECT_TRUE(doc.GetFloatMask()->GetBit(1, 0));
}

// A floating selection turned by an angle keeps its position; its mask turns
// with it, and the corners no source pixel falls on are not selected.
TEST_F(ImageCommandsTest, AngledRotationOfAFloatingSelection) {
    FloatRectangle(4, 2, 13, 7);
    auto floating = DuplicateImage(doc.GetFloatImage());
    ctx.background = MakeColorWord(1, 2, 3);
    ASSERT_EQ(RunRotate(ctx, 45, true), 1);
    EXPECT_EQ(undo.Kind(), 10);
    EXPECT_EQ(doc.FloatX(), 4);
    const CDibImage& mask = *doc.GetFloatMask();
    EXPECT_EQ(mask.Width(), doc.GetFloatImage()->Width());
    EXPECT_EQ(mask.Width(), 12); // ceil(10 x 0.707 + 6 x 0.707)
    EXPECT_FALSE(mask.GetBit(0, 0));
    EXPECT_EQ(doc.GetFloatImage()->GetPixel(0, 0), MakeColorWord(1, 2, 3));
    EXPECT_TRUE(mask.GetBit(mask.Width() / 2, mask.Height() / 2));
    EXPECT_TRUE(SamePixels(*doc.GetPicture(), *original));
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_TRUE(SamePixels(*doc.GetFloatImage(), *floating));
    EXPECT_EQ(doc.GetFloatMask()->Width(), 10);
}

TEST_F(ImageCommandsTest, AResultThatCannotBeMadeChangesNothing) {
    platform::HeapBlock::FailNextAllocations(3);
    EXPECT_EQ(RunImageCommand(ctx, kBlurSmall), 0);
    platform::HeapBlock::FailNextAllocations(3);
    EXPECT_EQ(RunGeometryCommand(ctx, kRotateLeft), 0);
    platform::HeapBlock::FailNextAllocations(3);
    AdjustPreview preview(ctx);
    EXPECT_EQ(preview.Begin(), 0);
    EXPECT_EQ(presenter.ShownIds(), (std::vector<int>{65, 65, 65}));
    EXPECT_TRUE(SamePixels(*doc.GetPicture(), *original));
    EXPECT_EQ(undo.Kind(), 0);
    EXPECT_FALSE(doc.IsModified());
}

TEST_F(ImageCommandsTest, RotateAndRescaleSizes) {
    EXPECT_EQ(RunRotate(ctx, 360, true), 0);
    EXPECT_EQ(presenter.ShownIds(), std::vector<int>{66});
    ASSERT_EQ(RunRotate(ctx, 90, false), 1); // 90 counter-clockwise is a left turn
    EXPECT_EQ(doc.GetPicture()->Width(), 10);
    EXPECT_EQ(doc.GetPicture()->GetPixel(0, 0), original->GetPixel(19, 0));
    ASSERT_TRUE(undo.Undo(doc));

    ASSERT_EQ(RunRescale(ctx, 10, 5, 0), 1);
    EXPECT_EQ(undo.Kind(), 10);
    EXPECT_EQ(doc.GetPicture()->Width(), 10);
    EXPECT_EQ(doc.GetSelectionMask()->Height(), 5);
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_TRUE(SamePixels(*doc.GetPicture(), *original));

    const int dpi = doc.GetPicture()->DpiX();
    ASSERT_EQ(RunRescale(ctx, 20, 10, 300), 1);
    EXPECT_EQ(undo.Kind(), 2);
    EXPECT_EQ(doc.GetPicture()->DpiX(), 300);
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_EQ(doc.GetPicture()->DpiX(), dpi);
    EXPECT_EQ(RunRescale(ctx, 0, 10, 0), 0);
}

TEST_F(ImageCommandsTest, AdjustPreviewConfirmsOrRestores) {
    AdjustSettings brighter = AdjustSettings::Defaults(kAdjustBrightnessContrast);
    brighter.first[0] = 100;
    {
        AdjustPreview preview(ctx);
        ASSERT_EQ(preview.Begin(), 1);
        preview.Apply(brighter);
        EXPECT_EQ(doc.GetPicture()->GetPixel(3, 3), Grey(255));
        preview.Apply(AdjustSettings::Defaults(kAdjustBrightnessContrast)); // changes never accumulate
        EXPECT_EQ(doc.GetPicture()->GetPixel(3, 3), original->GetPixel(3, 3));
        preview.Apply(brighter);
        preview.Cancel();
    }
    EXPECT_TRUE(SamePixels(*doc.GetPicture(), *original));
    EXPECT_EQ(undo.Kind(), 0);

    // Per-channel slots apply only when a channel is chosen.
    AdjustSettings redOnly = AdjustSettings::Defaults(kAdjustBrightnessContrast);
    redOnly.first[1] = -100;
    ASSERT_EQ(RunAdjustCommand(ctx, redOnly), 1);
    EXPECT_TRUE(SamePixels(*doc.GetPicture(), *original));
    EXPECT_EQ(undo.Kind(), 1);
    redOnly.channel = 1;
    ASSERT_EQ(RunAdjustCommand(ctx, redOnly), 1);
    EXPECT_EQ(RedOf(doc.GetPicture()->GetPixel(5, 5)), 0);
    EXPECT_EQ(GreenOf(doc.GetPicture()->GetPixel(5, 5)), GreenOf(original->GetPixel(5, 5)));
}

} // namespace
