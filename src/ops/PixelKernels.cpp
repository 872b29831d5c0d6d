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

// x / 127 for 0 <= x <= 127 x 255.
constexpr int DivideBy127(int x) {
    return (x * 33027) >> 22;
}
constexpr bool DivideBy127IsExact() {
    for (int x = 0; x <= 127 * 255; ++x) {
        if (DivideBy127(x) != x / 127) {
            return false;
        }
    }
    return true;
}
static_assert(DivideBy127IsExact());

// c + (255 - c) x (L - 128) / 127 from 128 up, else c - (127 - L) x c / 127.
inline int Level(int c, int lum) {
    const int up = c + DivideBy127((255 - c) * std::max(lum - 128, 0));
    const int down = c - DivideBy127(std::max(127 - lum, 0) * c);
    return lum >= 128 ? up : down;
}

TAMRICK_VECTOR_CLONES void LevelRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict out,
                                    int width, int blue, int green, int red) {
    for (int x = 0; x < width; ++x) {
        const auto lum = static_cast<int>(FastLuminance(in[3 * x], in[3 * x + 1], in[3 * x + 2]));
        out[3 * x] = static_cast<std::uint8_t>(Level(blue, lum));
        out[3 * x + 1] = static_cast<std::uint8_t>(Level(green, lum));
        out[3 * x + 2] = static_cast<std::uint8_t>(Level(red, lum));
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
