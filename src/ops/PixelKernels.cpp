#include "ops/PixelKernels.h"

#include "ops/FilterMath.h"

#include <algorithm>
#include <cstring>

namespace ops {

namespace {
// Luminance sums 59 G + 30 R + 11 B + 50 stay below 25551.
inline std::uint32_t FastLuminance(std::uint32_t blue, std::uint32_t green, std::uint32_t red) {
    return static_cast<std::uint32_t>(DivideBy100(static_cast<int>(59 * green + 30 * red + 11 * blue + 50)));
}
} // namespace

TAMRICK_VECTOR_CLONES void InvertBytes(const std::uint8_t* __restrict in, std::uint8_t* __restrict out,
                                       std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = static_cast<std::uint8_t>(~in[i]);
    }
}

TAMRICK_VECTOR_CLONES void GrayRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict out,
                                   int width) {
    for (int x = 0; x < width; ++x) {
        const auto level = static_cast<std::uint8_t>(FastLuminance(in[3 * x], in[3 * x + 1], in[3 * x + 2]));
        out[3 * x] = level;
        out[3 * x + 1] = level;
        out[3 * x + 2] = level;
    }
}

TAMRICK_VECTOR_CLONES void LuminanceRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict levels,
                                        int width) {
    for (int x = 0; x < width; ++x) {
        levels[x] = static_cast<std::uint8_t>(FastLuminance(in[3 * x], in[3 * x + 1], in[3 * x + 2]));
    }
}

void LevelRow(const std::uint8_t* __restrict luminance, std::uint8_t* __restrict out, int width,
              const std::uint32_t* __restrict colors) {
    // Four bytes at a time; the fourth is overwritten by the next pixel.
    for (int x = 0; x + 1 < width; ++x) {
        std::memcpy(out + 3 * x, &colors[luminance[x]], 4);
    }
    if (width > 0) {
        std::memcpy(out + 3 * (width - 1), &colors[luminance[width - 1]], 3);
    }
}

void TableRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, int width,
              const std::uint8_t* __restrict blue, const std::uint8_t* __restrict green,
              const std::uint8_t* __restrict red) {
    int x = 0;
    for (; x + 4 <= width; x += 4) {
        const std::uint8_t* p = in + 3 * x;
        std::uint8_t* q = out + 3 * x;
        q[0] = blue[p[0]], q[1] = green[p[1]], q[2] = red[p[2]];
        q[3] = blue[p[3]], q[4] = green[p[4]], q[5] = red[p[5]];
        q[6] = blue[p[6]], q[7] = green[p[7]], q[8] = red[p[8]];
        q[9] = blue[p[9]], q[10] = green[p[10]], q[11] = red[p[11]];
    }
    for (; x < width; ++x) {
        out[3 * x] = blue[in[3 * x]];
        out[3 * x + 1] = green[in[3 * x + 1]];
        out[3 * x + 2] = red[in[3 * x + 2]];
    }
}

} // namespace ops
