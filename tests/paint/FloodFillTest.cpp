#include "paint/FloodFill.h"
#include "paint/DirectionStack.h"
#include "support/ImageFixtures.h"

#include <gtest/gtest.h>

namespace {

std::unique_ptr<CDibImage> Uniform(int width, int height, ColorWord color) {
    auto image = MakeImage(width, height);
    image->Clear(color);
    return image;
}

int CountColor(const CDibImage& image, ColorWord color) {
    int count = 0;
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            count += image.GetPixel(x, y) == color ? 1 : 0;
        }
    }
    return count;
}

} // namespace

TEST(DirectionStack, PacksFourEntriesPerByteAndPopsInReverse) {
    DirectionStack stack;
    ASSERT_TRUE(stack.IsUsable());
    EXPECT_EQ(stack.Pop(), -1);
    for (const int d : {1, 2, 3, 0, 3}) {
        EXPECT_EQ(stack.Push(d), 1);
    }
    EXPECT_EQ(stack.CurrentChunkByte(0), 0b01101100);
    EXPECT_EQ(stack.CurrentChunkByte(1), 0b11000000);
    for (const int d : {3, 0, 3, 2, 1}) {
        EXPECT_EQ(stack.Pop(), d);
    }
    EXPECT_EQ(stack.Pop(), -1);
}

TEST(DirectionStack, GrowsAndShrinksByChunksOf240000) {
    DirectionStack stack;
    const int total = 2 * DirectionStack::kEntriesPerChunk + 5;
    for (int i = 0; i < total; ++i) {
        stack.Push(i % 4 == 0 ? (i / 4) % 4 : i % 4);
    }
    EXPECT_EQ(stack.ChunkCount(), 3);
    for (int i = total - 1; i >= 0; --i) {
        ASSERT_EQ(stack.Pop(), i % 4 == 0 ? (i / 4) % 4 : i % 4) << i;
    }
    EXPECT_EQ(stack.Pop(), -1);
    EXPECT_EQ(stack.ChunkCount(), 1);

    platform::HeapBlock::FailNextAllocations(1);
    DirectionStack broken;
    EXPECT_FALSE(broken.IsUsable());
    EXPECT_EQ(broken.Push(2), 0);
    EXPECT_EQ(broken.Pop(), -1);
}

TEST(FloodFill, FillsTheFourConnectedAreaOfTheSeedColourOnly) {
    auto image = Uniform(9, 9, kWhite);
    for (int i = 0; i < 9; ++i) {
        image->SetPixel(i, 4, 0x000000); // a wall across the middle
    }
    image->SetPixel(4, 4, 0x010101); // a near-black gap does not open it at tolerance 0
    image->SetPixel(2, 2, 0xFEFEFE); // off by one: outside tolerance 0
    ImageRect changed;
    ASSERT_EQ(FloodFill(*image, 0, 0, kRed, 0, &changed), 1);
    EXPECT_EQ(CountColor(*image, kRed), 9 * 4 - 1);
    EXPECT_EQ(image->GetPixel(2, 2), 0xFEFEFEu);
    EXPECT_EQ(image->GetPixel(0, 5), kWhite);
    EXPECT_EQ(changed, (ImageRect{0, 0, 8, 3}));

    auto diagonal = Uniform(4, 4, 0x000000);
    diagonal->SetPixel(1, 1, kWhite);
    diagonal->SetPixel(2, 2, kWhite);
    FloodFill(*diagonal, 1, 1, kRed, 10);
    EXPECT_EQ(diagonal->GetPixel(2, 2), kWhite) << "diagonal neighbours are never reached";

    EXPECT_EQ(FloodFill(*image, 9, 0, kRed, 0), 0);
    EXPECT_EQ(FloodFill(*image, 0, -1, kRed, 0), 0);
}

TEST(FloodFill, ToleranceBoxAndTheFillColourStop) {
    auto image = MakeGradientImage(20, 10);
    auto copy = DuplicateImage(image.get());
    FloodFill(*image, 3, 3, kRed, 255);
    EXPECT_EQ(CountColor(*image, kRed), 200) << "tolerance 255 takes every pixel";

    // A seed that already has the fill colour: only differing neighbours
    // inside the tolerance are filled, and the walk goes on from them.
    auto strip = Uniform(6, 1, kRed);
    strip->SetPixel(1, 0, 0x0000F0);
    strip->SetPixel(2, 0, 0x0000E8);
    strip->SetPixel(3, 0, 0x000080);
    FloodFill(*strip, 0, 0, kRed, 24);
    EXPECT_EQ(strip->GetPixel(1, 0), kRed);
    EXPECT_EQ(strip->GetPixel(2, 0), kRed);
    EXPECT_EQ(strip->GetPixel(3, 0), 0x000080u);

    // Seed channel 250 with tolerance 32: 218..255 (the upper end is not cut).
    auto row = Uniform(4, 1, MakeColorWord(250, 0, 0));
    row->SetPixel(1, 0, MakeColorWord(218, 0, 0));
    row->SetPixel(2, 0, MakeColorWord(217, 0, 0));
    FloodFill(*row, 0, 0, 0x00FF00, 32);
    EXPECT_EQ(row->GetPixel(1, 0), 0x00FF00u);
    EXPECT_EQ(row->GetPixel(2, 0), MakeColorWord(217, 0, 0));
}

TEST(FloodFill, LargeUniformPictureCrossesChunkBoundaries) {
    auto image = Uniform(700, 400, kWhite); // 280,000 steps deep: two chunks
    FloodFill(*image, 350, 200, kRed, 0);
    EXPECT_EQ(CountColor(*image, kRed), 700 * 400);
}

TEST(FloodFill, MaskImagesFillThroughThePalette) {
    auto mask = CreateMask(20, 3, true);
    mask->SetBit(10, 0, true);
    mask->SetBit(10, 1, true);
    mask->SetBit(10, 2, true);
    FloodFill(*mask, 0, 1, 0xFFFFFF, 0);
    // The set column already has the fill colour and stops the walk.
    for (int x = 0; x < 20; ++x) {
        EXPECT_EQ(mask->GetBit(x, 1), x <= 10 ? 1 : 0) << x;
    }
}

TEST(FloodFill, WithoutAStackItStopsAtTheFirstDeadEnd) {
    // A comb: row 0 open, black walls down every even column below it.
    const auto comb = [] {
        auto image = Uniform(21, 10, kWhite);
        for (int x = 2; x <= 20; x += 2) {
            for (int y = 1; y < 10; ++y) {
                image->SetPixel(x, y, 0x000000);
            }
        }
        return image;
    };
    auto complete = comb();
    FloodFill(*complete, 0, 0, kRed, 0);
    EXPECT_EQ(CountColor(*complete, kRed), 21 + 11 * 9);

    auto cut = comb();
    platform::HeapBlock::FailNextAllocations(1);
    EXPECT_EQ(FloodFill(*cut, 0, 0, kRed, 0), 1);
    EXPECT_EQ(CountColor(*cut, kRed), 21) << "the walk ends at its first dead end";
}
