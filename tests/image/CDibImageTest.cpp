#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "platform/HeapBlock.h"
#include "platform/ScreenMetrics.h"
#include "support/ImageFixtures.h"
#include "support/ScriptedPresenter.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

namespace {

std::vector<std::uint8_t> StoredRow(const CDibImage& image, int storageIndex) {
    const std::uint8_t* row = image.Bits() + static_cast<std::size_t>(storageIndex) * image.RowBytes();
    return {row, row + image.RowBytes()};
}

TEST(DibLayout, RowsArePaddedAndStoredBottomUp) {
    auto mask = CreateMask(13, 3, false);
    ASSERT_TRUE(mask);
    EXPECT_EQ(mask->RowBytes(), 4u);
    EXPECT_EQ(mask->ColorCount(), 2);
    EXPECT_EQ(mask->PixelFormat(), 0);
    EXPECT_EQ(StoredRow(*mask, 1), (std::vector<std::uint8_t>{0xFF, 0xF8, 0x00, 0x00}));

    auto picture = MakeImage(5, 3);
    EXPECT_EQ(picture->RowBytes(), 16u);
    EXPECT_EQ(picture->ImageBytes(), 48u);
    EXPECT_EQ(picture->ColorCount(), 0);
    EXPECT_EQ(picture->PixelFormat(), 4);
    picture->SetPixel(1, 0, 0x00336699);
    EXPECT_EQ(picture->GetPixel(1, 0), 0x00336699u);
    // Row 0 is the top row, stored last; pixel 1 starts at byte 3 in blue, green, red order.
    const auto top = StoredRow(*picture, 2);
    EXPECT_EQ(top[3], 0x33);
    EXPECT_EQ(top[4], 0x66);
    EXPECT_EQ(top[5], 0x99);
    EXPECT_TRUE(picture->IsModified());
}

TEST(DibLayout, ResolutionRoundsWithTheExtraPixelPerMetre) {
    BitmapInfoHeader header;
    InitDibHeader(header, 4, 4, 24, 0, 0);
    header.biXPelsPerMeter = 2834;
    header.biYPelsPerMeter = 3779;
    CDibImage image;
    ASSERT_EQ(image.Create(&header, nullptr), 1);
    EXPECT_EQ(image.DpiX(), 72);
    EXPECT_EQ(image.DpiY(), 96);

    platform::ScreenMetrics::SetLogicalDpi(120, 110);
    header.biYPelsPerMeter = 0;
    CDibImage unresolved;
    ASSERT_EQ(unresolved.Create(&header, nullptr), 1);
    platform::ScreenMetrics::SetLogicalDpi(96, 96);
    EXPECT_EQ(unresolved.DpiX(), 120);
    EXPECT_EQ(unresolved.DpiY(), 110);
    EXPECT_EQ(unresolved.Header()->biXPelsPerMeter, 120 * 10000 / 254);
    EXPECT_EQ(unresolved.Header()->biYPelsPerMeter, 110 * 10000 / 254);
}

TEST(DibSpans, MaskSpansRealignAndKeepNeighbours) {
    auto mask = CreateMask(40, 2, true);
    for (int x = 3; x <= 10; x += 2) {
        mask->SetBit(x, 0, true);
    }
    std::uint8_t one = 0x00;
    ASSERT_EQ(mask->GetSpan(3, 10, 0, &one), 1);
    EXPECT_EQ(one, 0xAA); // pixels 3, 5, 7, 9 set; pixel 3 in the top bit

    // Random spans against a bit-by-bit reference.
    std::mt19937 random(7);
    std::vector<int> reference(40, 0);
    for (int round = 0; round < 300; ++round) {
        int x0 = static_cast<int>(random() % 40);
        int x1 = static_cast<int>(random() % 40);
        if (x0 > x1) {
            std::swap(x0, x1);
        }
        std::uint8_t source[6];
        for (auto& b : source) {
            b = static_cast<std::uint8_t>(random());
        }
        ASSERT_EQ(mask->PutSpan(x0, x1, 1, source), 1);
        for (int x = x0; x <= x1; ++x) {
            reference[x] = (source[(x - x0) / 8] >> (7 - (x - x0) % 8)) & 1;
        }
        for (int x = 0; x < 40; ++x) {
            ASSERT_EQ(mask->GetBit(x, 1), reference[x]) << "round " << round << " x " << x;
        }
        std::uint8_t readBack[6] = {0, 0, 0, 0, 0, 0xEE};
        mask->GetSpan(x0, x1, 1, readBack);
        for (int x = x0; x <= x1; ++x) {
            ASSERT_EQ((readBack[(x - x0) / 8] >> (7 - (x - x0) % 8)) & 1, reference[x]);
        }
    }
}

TEST(DibSpans, RowsOutsideThePictureReadAsZeroAndAreNotWritten) {
    auto picture = MakeGradientImage(4, 2);
    std::uint8_t span[12];
    std::memset(span, 0xAB, sizeof span);
    EXPECT_EQ(picture->GetSpan(0, 3, -1, span), 0);
    EXPECT_EQ(std::vector<std::uint8_t>(span, span + 12), std::vector<std::uint8_t>(12, 0));
    EXPECT_EQ(picture->GetSpan(0, 3, 2, span), 0);
    EXPECT_EQ(picture->PutSpan(0, 3, 2, span), 0);
    EXPECT_EQ(picture->GetBit(0, 0), 0);

    auto mask = CreateMask(9, 2, false);
    EXPECT_EQ(mask->GetBit(-1, 0), 0);
    EXPECT_EQ(mask->GetBit(9, 0), 0);
    EXPECT_EQ(mask->GetBit(8, 1), 1);
    EXPECT_EQ(mask->GetBit(0, 2), 0);
}

TEST(DibSpans, MaskSpanBytesMergeTheEdgesIntoTheSource) {
    auto mask = CreateMask(24, 1, false);
    std::uint8_t source[2] = {0x00, 0x00};
    ASSERT_EQ(mask->PutSpanBytes(5, 12, 0, source), 1);
    EXPECT_EQ(source[0], 0xF8); // pixels 0..4 kept from the row
    EXPECT_EQ(source[1], 0x07); // pixels 13..15 kept
    EXPECT_EQ(StoredRow(*mask, 0)[0], 0xF8);
    EXPECT_EQ(StoredRow(*mask, 0)[1], 0x07);
    EXPECT_EQ(StoredRow(*mask, 0)[2], 0xFF);
}

TEST(DibRows, BlockReadsFollowStorageOrder) {
    auto picture = MakeGradientImage(3, 4);
    std::vector<std::uint8_t> block(picture->RowBytes() * 2);
    EXPECT_EQ(picture->GetRows(1, 2, block.data()), 3);
    std::vector<std::uint8_t> row(picture->RowBytes());
    picture->GetRow(2, row.data());
    EXPECT_TRUE(std::equal(row.begin(), row.end(), block.begin())); // row 2 first

    std::vector<std::uint8_t> rect(8 * 2, 0);
    picture->GetRect(1, 2, 0, 1, rect.data(), 8);
    EXPECT_EQ(rect[0], BlueOf(picture->GetPixel(1, 1)));
    EXPECT_EQ(rect[8], BlueOf(picture->GetPixel(1, 0)));

    auto mask = CreateMask(2, 11, true);
    for (int y : {0, 3, 9, 10}) {
        mask->SetBit(1, y, true);
    }
    std::uint8_t column[2] = {0xFF, 0xFF};
    mask->GetColumn(1, 0, 10, column);
    EXPECT_EQ(column[0], 0x90);
    EXPECT_EQ(column[1], 0x60);
}

TEST(DibPacked, RoundTripsAndRefusals) {
    auto picture = MakeGradientImage(7, 5);
    platform::HeapBlock packed = picture->ToPackedDib();
    ASSERT_TRUE(packed);
    EXPECT_EQ(packed.size(), picture->ImageBytes() + 40u);
    CDibImage back;
    ASSERT_EQ(back.CreateFromPackedDib(packed.data(), packed.size()), 1);
    EXPECT_TRUE(SamePixels(*picture, back));
    EXPECT_EQ(back.DpiX(), 72);

    auto mask = CreateMask(13, 3, false);
    mask->SetBit(4, 1, false);
    platform::HeapBlock packedMask = mask->ToPackedDib();
    EXPECT_EQ(packedMask.size(), mask->ImageBytes() + 48u);
    CDibImage maskBack;
    ASSERT_EQ(maskBack.CreateFromPackedDib(packedMask.data(), packedMask.size()), 1);
    EXPECT_TRUE(SamePixels(*mask, maskBack));
    ColorWord white = 0;
    EXPECT_EQ(maskBack.GetPaletteColor(1, white), 1);
    EXPECT_EQ(white, 0x00FFFFFFu);

    CDibImage truncated;
    EXPECT_EQ(truncated.CreateFromPackedDib(packed.data(), packed.size() - 1), 0);
    BitmapInfoHeader eightBit;
    InitDibHeader(eightBit, 2, 2, 8, 72, 72);
    std::vector<std::uint8_t> indexed(40 + 1024 + 8, 0);
    std::memcpy(indexed.data(), &eightBit, 40);
    CDibImage refused;
    EXPECT_EQ(refused.CreateFromPackedDib(indexed.data(), indexed.size()), 0);
}

TEST(DibCopies, DeepCopyIsIndependentAndFailsCleanly) {
    auto picture = MakeGradientImage(6, 4);
    auto copy = DuplicateImage(picture.get());
    ASSERT_TRUE(copy);
    EXPECT_FALSE(copy->IsModified());
    picture->SetPixel(0, 0, 0);
    EXPECT_NE(copy->GetPixel(0, 0), 0u);

    platform::HeapBlock::FailNextAllocations(1);
    EXPECT_EQ(DuplicateImage(picture.get()), nullptr);
    EXPECT_EQ(DuplicateImage(nullptr), nullptr);

    ScriptedPresenter presenter;
    auto part = CopyRectToNewImage(*picture, 1, 1, 3, 2);
    ASSERT_TRUE(part);
    EXPECT_EQ(part->Width(), 3);
    EXPECT_EQ(part->GetPixel(0, 0), picture->GetPixel(1, 1));
    platform::HeapBlock::FailNextAllocations(1);
    EXPECT_EQ(CopyRectToNewImage(*picture, 0, 0, 1, 1), nullptr);
    EXPECT_EQ(presenter.ShownIds(), std::vector<int>{65});
}

TEST(DibHelpers, ClearFillsPicturesAndMasks) {
    auto picture = MakeGradientImage(5, 3);
    picture->Clear(0x00102030);
    EXPECT_EQ(picture->GetPixel(4, 2), 0x00102030u);
    auto mask = CreateMask(13, 2, true);
    mask->Clear(0x00FFFFFF);
    EXPECT_EQ(StoredRow(*mask, 0), (std::vector<std::uint8_t>{0xFF, 0xF8, 0x00, 0x00}));
    mask->Clear(0);
    EXPECT_EQ(mask->GetBit(0, 0), 0);

    ImageRect box;
    EXPECT_FALSE(FindSetBitsBounds(*mask, box));
    mask->SetBit(12, 0, true);
    mask->SetBit(3, 1, true);
    ASSERT_TRUE(FindSetBitsBounds(*mask, box));
    EXPECT_EQ(box, (ImageRect{3, 0, 12, 1}));
}

TEST(DibHelpers, FixedPaletteHasTheDocumentedEntries) {
    RgbQuad table[256];
    BuildPalette(table, 2);
    auto rgb = [&](int i) { return MakeColorWord(table[i].red, table[i].green, table[i].blue); };
    EXPECT_EQ(rgb(1), MakeColorWord(0, 0, 255));
    EXPECT_EQ(rgb(4), MakeColorWord(255, 0, 0));
    EXPECT_EQ(rgb(7), MakeColorWord(255, 255, 255));
    EXPECT_EQ(rgb(8), MakeColorWord(0, 0, 51));
    EXPECT_EQ(rgb(211), MakeColorWord(255, 255, 204)); // last cube colour
    EXPECT_EQ(rgb(212), MakeColorWord(64, 0, 0));      // first ramp: 64 in each family
    EXPECT_EQ(rgb(217), MakeColorWord(64, 64, 0));
    EXPECT_EQ(rgb(241), MakeColorWord(192, 192, 0));
    EXPECT_EQ(rgb(242), MakeColorWord(33, 33, 33));
    EXPECT_EQ(rgb(247), MakeColorWord(198, 198, 198));
    EXPECT_EQ(rgb(248), MakeColorWord(0, 0, 128));
    EXPECT_EQ(rgb(255), MakeColorWord(192, 192, 192));
}

} // namespace
