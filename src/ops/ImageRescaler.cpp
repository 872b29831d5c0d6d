#include "ops/ImageRescaler.h"

#include "image/CDibImage.h"
#include "ops/ResampleKernel.h"
#include "ops/RowResampler.h"
#include "ops/FilterMath.h"
#include "ops/RowPasses.h"

#include <cstring>

namespace ops {

namespace {

TAMRICK_VECTOR_CLONES void AddWeightedRow(const std::uint8_t* __restrict row, std::uint32_t weight,
                                          std::uint32_t* __restrict sums, std::size_t count) {
    for (std::size_t b = 0; b < count; ++b) {
        sums[b] += weight * row[b];
    }
}

// Two rows blended with weights adding up to 256, rounded: the column kernel's
// sum and Finish in one 16-bit step (255 x 256 + 128 fits).
TAMRICK_VECTOR_CLONES void BlendTwoRows(const std::uint8_t* __restrict first, const std::uint8_t* __restrict second,
                                        std::uint16_t firstWeight, std::uint16_t secondWeight,
                                        std::uint8_t* __restrict out, std::size_t count) {
    for (std::size_t b = 0; b < count; ++b) {
        out[b] = static_cast<std::uint8_t>((first[b] * firstWeight + second[b] * secondWeight + 128) >> 8);
    }
}

} // namespace

int RescalePicture(const CDibImage& source, CDibImage& target) {
    const int sourceHeight = source.Height();
    const int targetWidth = target.Width();
    const int targetHeight = target.Height();
    const std::uint32_t targetRowBytes = target.RowBytes();
    RowResampler rows(source.Width(), targetWidth);
    ResampleKernel columns(sourceHeight, targetHeight);
    platform::HeapBlock between =
        platform::HeapBlock::Allocate(static_cast<std::size_t>(targetRowBytes) * sourceHeight);
    if (!between || !rows.IsValid() || !columns.IsValid()) {
        return 0;
    }
    // Rows first, into stored order (bottom row first) of the source height.
    const std::uint8_t* src = source.Bits();
    std::uint8_t* mid = between.data();
    ForEachStoredRow(sourceHeight, 0, [&](int y, std::uint8_t*) {
        rows.Resample(src + static_cast<std::size_t>(y) * source.RowBytes(),
                      mid + static_cast<std::size_t>(y) * targetRowBytes);
    });
    // Then columns: target row j (from the top) from the rows its taps name.
    std::uint8_t* dst = target.MutableBits();
    const std::size_t pixelBytes = 3 * static_cast<std::size_t>(targetWidth);
    const auto storedRow = [&](int y) { return mid + static_cast<std::size_t>(sourceHeight - 1 - y) * targetRowBytes; };
    if (columns.IsTwoTapsOf256()) {
        return ForEachStoredRow(targetHeight, 0, [&](int j, std::uint8_t*) {
            const std::int32_t* weights = columns.Weights(j);
            const bool pair = columns.Count(j) == 2;
            BlendTwoRows(storedRow(columns.First(j)), storedRow(columns.First(j) + (pair ? 1 : 0)),
                         static_cast<std::uint16_t>(weights[0]), static_cast<std::uint16_t>(pair ? weights[1] : 0),
                         dst + static_cast<std::size_t>(targetHeight - 1 - j) * targetRowBytes, pixelBytes);
        });
    }
    return ForEachStoredRow(targetHeight, pixelBytes * sizeof(std::uint32_t), [&](int j, std::uint8_t* work) {
        auto* sums = reinterpret_cast<std::uint32_t*>(work);
        std::memset(sums, 0, pixelBytes * sizeof(std::uint32_t));
        const std::int32_t* weights = columns.Weights(j);
        for (int k = 0; k < columns.Count(j); ++k) {
            const int y = columns.First(j) + k;
            AddWeightedRow(storedRow(y), static_cast<std::uint32_t>(weights[k]), sums, pixelBytes);
        }
        columns.FinishAll(sums, dst + static_cast<std::size_t>(targetHeight - 1 - j) * targetRowBytes,
                          pixelBytes);
    });
}

int RescaleMask(const CDibImage& source, CDibImage& target) {
    const int sourceWidth = source.Width();
    const int sourceHeight = source.Height();
    const int width = target.Width();
    const int height = target.Height();
    platform::HeapBlock row = platform::HeapBlock::Allocate(target.RowBytes());
    if (!row) {
        return 0;
    }
    for (int y = 0; y < height; ++y) {
        const int sy = static_cast<int>((2LL * y + 1) * sourceHeight / (2LL * height));
        std::memset(row.data(), 0, target.RowBytes());
        for (int x = 0; x < width; ++x) {
            const int sx = static_cast<int>((2LL * x + 1) * sourceWidth / (2LL * width));
            if (source.GetBit(sx, sy)) {
                row.data()[x >> 3] = static_cast<std::uint8_t>(row.data()[x >> 3] | (0x80 >> (x & 7)));
            }
        }
        target.SetRow(y, row.data());
    }
    return 1;
}

} // namespace ops
