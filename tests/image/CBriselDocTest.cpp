#include "image/DocumentFixture.h"

namespace {

TEST_F(DocumentTest, FloatingSelectionPartlyOutsideThePicture) {
    ASSERT_EQ(doc.CreateFloating(-3, 8, 4, 12, false), 1);
    doc.SetFloatPosition(-3, 8);
    CDibImage* floating = doc.GetFloatImage();
    ASSERT_TRUE(floating);
    EXPECT_EQ(doc.GetImage(), floating);
    EXPECT_EQ(doc.GetMask(), doc.GetFloatMask());
    EXPECT_EQ(floating->Width(), 8);
    EXPECT_EQ(floating->Height(), 5);
    EXPECT_EQ(floating->GetPixel(3, 0), original->GetPixel(0, 8));
    EXPECT_EQ(floating->GetPixel(0, 0), 0u); // outside the picture
    EXPECT_EQ(floating->GetPixel(7, 2), 0u);
    EXPECT_EQ(doc.GetFloatRect(), (ImageRect{-3, 8, 5, 13}));

    // Stamping changes only the part inside the picture.
    Paint(*floating, 0x00ABCDEF);
    ASSERT_EQ(doc.PutFloating(false), 1);
    EXPECT_FALSE(doc.GetFloatImage());
    EXPECT_TRUE(doc.IsModified());
    EXPECT_EQ(doc.GetPicture()->GetPixel(4, 9), 0x00ABCDEFu);
    EXPECT_EQ(doc.GetPicture()->GetPixel(0, 8), 0x00ABCDEFu);
    EXPECT_EQ(doc.GetPicture()->GetPixel(5, 9), original->GetPixel(5, 9));
    EXPECT_EQ(doc.GetPicture()->GetPixel(4, 7), original->GetPixel(4, 7));
}

TEST_F(DocumentTest, StampingHonoursTheFloatingMask) {
    ASSERT_EQ(doc.CreateFloating(2, 2, 13, 4, true), 1);
    doc.SetFloatPosition(2, 2);
    Paint(*doc.GetFloatImage(), 0);
    for (int x = 0; x < 12; x += 3) {
        doc.GetFloatMask()->SetBit(x, 1, true);
    }
    ASSERT_EQ(doc.PutFloating(true), 1);
    EXPECT_TRUE(doc.GetFloatImage()); // kept, still selectable
    EXPECT_FALSE(doc.IsFloating());
    for (int x = 2; x < 14; ++x) {
        const bool selected = (x - 2) % 3 == 0;
        EXPECT_EQ(doc.GetPicture()->GetPixel(x, 3), selected ? 0u : original->GetPixel(x, 3)) << x;
    }
}

TEST_F(DocumentTest, SelectionMaskFloatsAndMergesBack) {
    CDibImage& mask = *doc.GetSelectionMask();
    mask.SetBit(5, 3, true);
    mask.SetBit(9, 6, true);
    ASSERT_EQ(doc.FloatSelection(), 1);
    EXPECT_EQ(doc.FloatX(), 5);
    EXPECT_EQ(doc.FloatY(), 3);
    EXPECT_EQ(doc.GetFloatMask()->Width(), 5);
    EXPECT_EQ(doc.GetFloatMask()->GetBit(0, 0), 1);
    EXPECT_EQ(doc.GetFloatMask()->GetBit(4, 3), 1);
    EXPECT_EQ(doc.GetFloatMask()->GetBit(1, 0), 0);
    EXPECT_EQ(doc.GetFloatImage()->GetPixel(4, 3), original->GetPixel(9, 6));
    EXPECT_EQ(mask.GetBit(5, 3), 0); // the work mask is left empty

    // Moved partly off the left edge: the columns left of the picture are skipped.
    doc.SetFloatPosition(-2, 0);
    doc.MergeFloatMask(false);
    EXPECT_EQ(mask.GetBit(2, 3), 1);
    EXPECT_EQ(mask.GetBit(0, 0), 0);
    doc.MergeFloatMask(true);
    EXPECT_EQ(mask.GetBit(2, 3), 0);
    EXPECT_EQ(mask.GetBit(0, 0), 1);
    EXPECT_EQ(mask.GetBit(1, 1), 1);
    EXPECT_EQ(mask.GetBit(3, 0), 0); // right of the floating mask: untouched

    mask.Clear(0);
    EXPECT_EQ(doc.FloatSelection(), 0);
}

TEST_F(DocumentTest, FailedFloatingCopyShowsTheMessageAndLeavesNoSelection) {
    platform::HeapBlock::FailNextAllocations(1);
    EXPECT_EQ(doc.CreateFloating(0, 0, 5, 5, false), 0);
    EXPECT_FALSE(doc.GetFloatImage());
    EXPECT_EQ(presenter.ShownIds(), std::vector<int>{65});
}

TEST_F(DocumentTest, NewImageAndResolution) {
    BitmapInfoHeader header;
    InitDibHeader(header, 13, 7, 24, 150, 150);
    doc.SetModifiedFlag();
    doc.SetReduced(true);
    ASSERT_EQ(doc.NewImage(header, kFillFormatTrueColor, 0x00FFFFFF), 1);
    EXPECT_FALSE(doc.IsModified());
    EXPECT_FALSE(doc.IsReduced());
    EXPECT_EQ(doc.GetPicture()->Width(), 13);
    EXPECT_EQ(doc.GetPicture()->GetPixel(12, 6), 0x00FFFFFFu);
    EXPECT_EQ(doc.GetSelectionMask()->Height(), 7);
    EXPECT_EQ(doc.SetResolution(300), 150);
    EXPECT_EQ(doc.GetPicture()->Header()->biXPelsPerMeter, 300 * 10000 / 254);

    platform::HeapBlock::FailNextAllocations(1);
    EXPECT_EQ(doc.NewImage(header, kFillFormatTrueColor, 0), 0);
    EXPECT_EQ(doc.GetPicture()->GetPixel(0, 0), 0x00FFFFFFu); // the old picture stays
    EXPECT_EQ(presenter.ShownIds(), std::vector<int>{27});
}

TEST_F(DocumentTest, ViewsHearAboutChanges) {
    std::vector<int> hints;
    const int id = doc.AddViewObserver([&](int hint) { hints.push_back(hint); });
    doc.UpdateAllViews(CBriselDoc::kHintImageSize);
    doc.CreateFloating(0, 0, 1, 1, false);
    doc.DiscardFloating();
    doc.RemoveViewObserver(id);
    doc.UpdateAllViews();
    EXPECT_EQ(hints, (std::vector<int>{1, 0}));
}

} // namespace
