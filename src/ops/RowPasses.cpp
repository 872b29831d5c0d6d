#include "ops/RowPasses.h"

#include "ops/FilterMath.h"
#include "ops/PixelKernels.h"

namespace ops {

TAMRICK_VECTOR_CLONES void SumThreeRows(const std::uint8_t* prev, const std::uint8_t* cur,
                                        const std::uint8_t* next, std::int16_t* sums, int pixelBytes) {
    for (int j = 0; j < pixelBytes; ++j) {
        sums[j] = static_cast<std::int16_t>(prev[j] + cur[j] + next[j]);
    }
    for (int k = 0; k < 3; ++k) {
        sums[k - 3] = sums[k];
        sums[pixelBytes + k] = sums[pixelBytes - 3 + k];
    }
}

TAMRICK_VECTOR_CLONES void SumThreePixels(const std::uint8_t* __restrict row, std::int16_t* __restrict sums,
                                          int pixelBytes) {
    if (pixelBytes <= 3) {
        for (int j = 0; j < pixelBytes; ++j) {
            sums[j] = static_cast<std::int16_t>(3 * row[j]);
        }
        return;
    }
    for (int j = 0; j < 3; ++j) {
        sums[j] = static_cast<std::int16_t>(2 * row[j] + row[j + 3]);
        const int last = pixelBytes - 3 + j;
        sums[last] = static_cast<std::int16_t>(row[last - 3] + 2 * row[last]);
    }
    for (int j = 3; j < pixelBytes - 3; ++j) {
        sums[j] = static_cast<std::int16_t>(row[j - 3] + row[j] + row[j + 3]);
    }
}

void ApplyChannelTables(const std::uint8_t* src, std::uint8_t* dst, int width, int height,
                        std::uint32_t rowBytes, const std::uint8_t* blue, const std::uint8_t* green,
                        const std::uint8_t* red) {
    ForEachStoredRow(height, 0, [=](int y, std::uint8_t*) {
        const std::size_t offset = static_cast<std::size_t>(y) * rowBytes;
        TableRow(src + offset, dst + offset, width, blue, green, red);
    });
}

} // namespace ops
