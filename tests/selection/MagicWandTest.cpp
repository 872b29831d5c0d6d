#include "selection/MagicWand.h"
#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/CommandContext.h"
#include "image/DibHelpers.h"
#include "support/ImageFixtures.h"
#include "support/ScriptedPresenter.h"

#include <gtest/gtest.h>

namespace {

// Two white areas separated by one grey column, on a 12 x 6 picture:
// columns 0..4 white, 5 grey, 6..11 white with a darker pixel at (8, 2).
class MagicWandTest : public ::testing::Test {
protected:
    void SetUp() override {
        auto picture = MakeImage(12, 6);
        picture->Clear(0xFFFFFF);
        for (int y = 0; y < 6; ++y) {
            picture->SetPixel(5, y, 0x808080);
        }
        picture->SetPixel(8, 2, 0xF0F0F0);
        doc.SetPicture(std::move(picture));
        doc.SetMask(CreateMask(12, 6, true));
    }
    void TearDown() override { platform::HeapBlock::FailNextAllocations(0); }

    int Selected() const {
        int count = 0;
        for (int y = 0; y < 6; ++y) {
            for (int x = 0; x < 12; ++x) {
                count += IsSelected(x, y) ? 1 : 0;
            }
        }
        return count;
    }
    bool IsSelected(int x, int y) const {
        const CDibImage* mask = doc.GetFloatMask();
        return mask != nullptr && mask->GetBit(x - doc.FloatX(), y - doc.FloatY()) == 1;
    }

    ScriptedPresenter presenter;
    CBriselDoc doc;
    CUndoHistory undo;
    CommandContext context{doc, undo};
};

} // namespace

TEST_F(MagicWandTest, ContinuousSelectsOneAreaGlobalSelectsAll) {
    EXPECT_EQ(RunMagicWand(context, 0, 0, WandCombine::New, 0, true), 1);
    EXPECT_EQ(Selected(), 30);
    EXPECT_EQ(doc.FloatX(), 0);
    EXPECT_EQ(doc.GetFloatMask()->Width(), 5);
    EXPECT_EQ(undo.Kind(), 5);

    EXPECT_EQ(RunMagicWand(context, 0, 0, WandCombine::New, 0, false), 1);
    EXPECT_EQ(Selected(), 65) << "both white areas, not the darker pixel";
    EXPECT_FALSE(IsSelected(8, 2));

    EXPECT_EQ(RunMagicWand(context, 0, 0, WandCombine::New, 15, false), 1);
    EXPECT_EQ(Selected(), 66) << "0xF0 lies within 15 of 0xFF";

    EXPECT_EQ(RunMagicWand(context, 3, 3, WandCombine::New, 255, true), 1);
    EXPECT_EQ(Selected(), 72) << "tolerance 255 takes every pixel";
}

TEST_F(MagicWandTest, AddAndSubtractCombineWithTheSelection) {
    RunMagicWand(context, 0, 0, WandCombine::New, 0, true);
    EXPECT_EQ(RunMagicWand(context, 7, 0, WandCombine::Add, 0, true), 1);
    EXPECT_EQ(Selected(), 65);
    EXPECT_EQ(doc.GetFloatMask()->Width(), 12);

    // A rectangle selection over columns 2..9; subtracting the white of the
    // left area removes only the connected, selected white pixels.
    doc.PutFloating(false);
    doc.CreateFloating(2, 0, 9, 5, false);
    doc.SetFloatPosition(2, 0);
    EXPECT_EQ(RunMagicWand(context, 3, 3, WandCombine::Subtract, 0, true), 1);
    EXPECT_FALSE(IsSelected(2, 0));
    EXPECT_FALSE(IsSelected(4, 5));
    EXPECT_TRUE(IsSelected(5, 0));
    EXPECT_TRUE(IsSelected(6, 0));
    EXPECT_EQ(Selected(), 8 * 6 - 3 * 6);

    EXPECT_EQ(RunMagicWand(context, 6, 0, WandCombine::Subtract, 255, true), 0);
    EXPECT_EQ(doc.GetFloatMask(), nullptr) << "subtracting everything leaves no selection";
    EXPECT_EQ(RunMagicWand(context, 12, 0, WandCombine::New, 0, true), 0) << "a tap outside does nothing";
}

TEST_F(MagicWandTest, UndoRestoresThePreviousSelection) {
    RunMagicWand(context, 0, 0, WandCombine::New, 0, true);
    RunMagicWand(context, 7, 0, WandCombine::New, 0, true);
    EXPECT_EQ(doc.FloatX(), 6);
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_EQ(doc.FloatX(), 0);
    EXPECT_EQ(Selected(), 30);
}

TEST_F(MagicWandTest, AWalkOutOfMemoryLeavesNoSelection) {
    platform::HeapBlock::FailNextAllocations(0);
    CDibImage& mask = *doc.GetSelectionMask();
    // Mark directly to reach the failure rule: the first chunk cannot be had.
    platform::HeapBlock::FailNextAllocations(1);
    EXPECT_EQ(MarkWandArea(*doc.GetPicture(), mask, 0, 0, 0, true, 1), 0);
    EXPECT_EQ(mask.GetBit(0, 0), 1) << "the seed itself is marked";

    auto big = MakeImage(700, 400);
    big->Clear(0xFFFFFF);
    auto bigMask = CreateMask(700, 400, true);
    EXPECT_EQ(MarkWandArea(*big, *bigMask, 0, 0, 0, true, 1), 1);
    ImageRect bounds;
    ASSERT_TRUE(FindSetBitsBounds(*bigMask, bounds));
    EXPECT_EQ(bounds, (ImageRect{0, 0, 699, 399}));
}

TEST(MagicWandMarks, OneBitPicturesAreReadThroughTheirPalette) {
    auto picture = CreateMask(16, 2, true);
    picture->SetBit(5, 0, true);
    picture->SetBit(5, 1, true);
    auto mask = CreateMask(16, 2, true);
    EXPECT_EQ(MarkWandArea(*picture, *mask, 0, 0, 10, true, 1), 1);
    EXPECT_EQ(mask->GetBit(4, 1), 1);
    EXPECT_EQ(mask->GetBit(5, 0), 0) << "white is far from black";
    EXPECT_EQ(mask->GetBit(6, 0), 0) << "beyond the white column";
    EXPECT_EQ(MarkWandArea(*picture, *mask, 0, 0, 10, false, 1), 1);
    EXPECT_EQ(mask->GetBit(15, 1), 1);
}
