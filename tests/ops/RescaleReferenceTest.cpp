// The row resampler and Rescale against a plain per-pixel reading of the
// kernel's taps: every output byte is its taps' weighted sum through Finish.
// Widths pair up so that shrinking by many ratios (two taps, three, ragged
// counts, a whole row into one pixel) and growing (with the last pixel's single
// tap) all occur, with rows whose ends fall at every lane position.
#include "ops/ImageRescaler.h"
#include "ops/OpsTestImages.h"
#include "ops/ResampleKernel.h"
#include "ops/RowResampler.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

std::vector<std::uint8_t> NoisyBytes(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<std::uint8_t> bytes(count);
    for (auto& b : bytes) {
        b = static_cast<std::uint8_t>(random());
    }
    return bytes;
}

// Sample i of one channel of a line whose samples lie `stride` bytes apart.
std::uint8_t PlainSample(const ResampleKernel& kernel, const std::uint8_t* line, std::size_t stride, int i) {
    std::uint32_t sum = 0;
    for (int k = 0; k < kernel.Count(i); ++k) {
        sum += static_cast<std::uint32_t>(kernel.Weights(i)[k]) * line[(kernel.First(i) + k) * stride];
    }
    return kernel.Finish(sum);
}

const int kWidthPairs[][2] = {{1, 1},   {9, 9},    {2, 1},    {40, 20},  {41, 20},  {100, 33}, {75, 31},
                              {257, 8}, {300, 1},  {64, 17},  {3, 7},    {20, 30},  {37, 70},  {8, 9},
                              {1, 13},  {99, 100}, {33, 101}, {120, 17}, {17, 120}, {4, 4000}};

TEST(RescaleReference, RowResamplerFollowsItsTaps) {
    for (const auto& pair : kWidthPairs) {
        const int sourceWidth = pair[0];
        const int targetWidth = pair[1];
        RowResampler resampler(sourceWidth, targetWidth);
        ASSERT_TRUE(resampler.IsValid());
        const ResampleKernel kernel(sourceWidth, targetWidth);
        // A source row with no slack after its last pixel.
        const std::vector<std::uint8_t> source = NoisyBytes(3 * static_cast<std::size_t>(sourceWidth), sourceWidth);
        std::vector<std::uint8_t> target(3 * static_cast<std::size_t>(targetWidth));
        resampler.Resample(source.data(), target.data());
        for (int i = 0; i < targetWidth; ++i) {
            for (int ch = 0; ch < 3; ++ch) {
                ASSERT_EQ(target[3 * i + ch], PlainSample(kernel, source.data() + ch, 3, i))
                    << sourceWidth << " -> " << targetWidth << " at " << i << " channel " << ch;
            }
        }
    }
}

// Rescale: rows through the row kernel, then columns of those rows.
TEST(RescaleReference, PictureFollowsRowsThenColumns) {
    const int sizes[][4] = {{40, 30, 20, 15}, {41, 29, 60, 45}, {13, 50, 7, 3}, {6, 5, 33, 17}, {97, 3, 31, 8}};
    for (const auto& size : sizes) {
        const int width = size[0];
        const int height = size[1];
        const int targetWidth = size[2];
        const int targetHeight = size[3];
        auto source = MakeImage(width, height);
        const std::vector<std::uint8_t> noise = NoisyBytes(source->ImageBytes(), width * height);
        std::copy(noise.begin(), noise.end(), source->MutableBits());
        auto target = MakeImage(targetWidth, targetHeight);
        ASSERT_EQ(ops::RescalePicture(*source, *target), 1);

        const ResampleKernel rows(width, targetWidth);
        const ResampleKernel columns(height, targetHeight);
        // Rows resampled, top row first, three bytes per pixel.
        std::vector<std::uint8_t> between(3 * static_cast<std::size_t>(targetWidth) * height);
        for (int y = 0; y < height; ++y) {
            const std::uint8_t* row = source->Bits() + static_cast<std::size_t>(height - 1 - y) * source->RowBytes();
            for (int i = 0; i < targetWidth; ++i) {
                for (int ch = 0; ch < 3; ++ch) {
                    between[(static_cast<std::size_t>(y) * targetWidth + i) * 3 + ch] =
                        PlainSample(rows, row + ch, 3, i);
                }
            }
        }
        for (int j = 0; j < targetHeight; ++j) {
            for (int i = 0; i < targetWidth; ++i) {
                for (int ch = 0; ch < 3; ++ch) {
                    const std::uint8_t expected =
                        PlainSample(columns, between.data() + 3 * i + ch, 3 * static_cast<std::size_t>(targetWidth), j);
                    const std::uint8_t actual =
                        target->Bits()[static_cast<std::size_t>(targetHeight - 1 - j) * target->RowBytes() + 3 * i + ch];
                    ASSERT_EQ(actual, expected) << width << " x " << height << " -> " << targetWidth << " x "
                                                << targetHeight << " at " << i << ", " << j;
                }
            }
        }
    }
}

} // namespace
