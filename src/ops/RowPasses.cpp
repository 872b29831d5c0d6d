#include "ops/RowPasses.h"

namespace ops {

void SumThreeRows(const std::uint8_t* prev, const std::uint8_t* cur, const std::uint8_t* next,
                  std::int16_t* sums, int pixelBytes) {
    for (int j = 0; j < pixelBytes; ++j) {
        sums[j] = static_cast<std::int16_t>(prev[j] + cur[j] + next[j]);
    }
    for (int k = 0; k < 3; ++k) {
        sums[k - 3] = sums[k];
        sums[pixelBytes + k] = sums[pixelBytes - 3 + k];
    }
}

void SumThreePixels(const std::uint8_t* row, std::int16_t* sums, int pixelBytes) {
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
    ForEachStoredRow(height, 0, [&](int y, std::uint8_t*) {
        const std::uint8_t* in = src + static_cast<std::size_t>(y) * rowBytes;
        std::uint8_t* out = dst + static_cast<std::size_t>(y) * rowBytes;
        for (int x = 0; x < width; ++x, in += 3, out += 3) {
            out[0] = blue[in[0]];
            out[1] = green[in[1]];
            out[2] = red[in[2]];
        }
    });
}

} // namespace ops
