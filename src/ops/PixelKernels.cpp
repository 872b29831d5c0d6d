#include "ops/PixelKernels.h"

#include "ops/FilterMath.h"

#include <algorithm>
#include <cstring>

namespace ops {

namespace {
// Luminance sums 59 G + 30 R + 11 B + 50 stay within 25550, so the whole
// rule runs in 16-bit lanes.
inline std::uint8_t FastLuminance(std::uint16_t blue, std::uint16_t green, std::uint16_t red) {
    const auto sum = static_cast<std::uint16_t>(59 * green + 30 * red + 11 * blue + 50);
    return static_cast<std::uint8_t>(DivideBy100Narrow(sum));
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
        const std::uint8_t level = FastLuminance(in[3 * x], in[3 * x + 1], in[3 * x + 2]);
        out[3 * x] = level;
        out[3 * x + 1] = level;
        out[3 * x + 2] = level;
    }
}

TAMRICK_VECTOR_CLONES void LuminanceRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict levels,
                                        int width) {
    for (int x = 0; x < width; ++x) {
        levels[x] = FastLuminance(in[3 * x], in[3 * x + 1], in[3 * x + 2]);
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

namespace {

void TableRowPortable(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, int width,
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

#if TAMRICK_HAS_BYTE_PERMUTES
// A 256-entry byte table held in four 64-byte registers: two-register byte
// permutes look up the low and the high half, bit 7 of the index chooses.
struct ByteTable {
    __m512i quarter[4];
};

TAMRICK_BYTE_PERMUTES ByteTable LoadByteTable(const std::uint8_t* table) {
    return {{_mm512_loadu_si512(table), _mm512_loadu_si512(table + 64), _mm512_loadu_si512(table + 128),
             _mm512_loadu_si512(table + 192)}};
}

TAMRICK_BYTE_PERMUTES __m512i LookUp(const ByteTable& table, __m512i index, __mmask64 high) {
    const __m512i low = _mm512_permutex2var_epi8(table.quarter[0], index, table.quarter[1]);
    const __m512i top = _mm512_permutex2var_epi8(table.quarter[2], index, table.quarter[3]);
    return _mm512_mask_blend_epi8(high, low, top);
}

// 64 pixels (three registers) at a time. Byte i of register r belongs to
// channel (64 r + i) mod 3, so each register blends its three look-ups with
// fixed masks.
TAMRICK_BYTE_PERMUTES void TableRowPermutes(const std::uint8_t* __restrict in, std::uint8_t* __restrict out,
                                            int width, const std::uint8_t* __restrict blue,
                                            const std::uint8_t* __restrict green,
                                            const std::uint8_t* __restrict red) {
    const ByteTable tables[3] = {LoadByteTable(blue), LoadByteTable(green), LoadByteTable(red)};
    __mmask64 channelMasks[3][3] = {};
    for (int r = 0; r < 3; ++r) {
        for (int i = 0; i < 64; ++i) {
            channelMasks[r][(64 * r + i) % 3] |= __mmask64{1} << i;
        }
    }
    const int blocks = width / 64;
    for (int block = 0; block < blocks; ++block) {
        for (int r = 0; r < 3; ++r) {
            const std::size_t offset = 192 * static_cast<std::size_t>(block) + 64 * r;
            const __m512i index = _mm512_loadu_si512(in + offset);
            const __mmask64 high = _mm512_movepi8_mask(index);
            __m512i result = LookUp(tables[0], index, high);
            result = _mm512_mask_blend_epi8(channelMasks[r][1], result, LookUp(tables[1], index, high));
            result = _mm512_mask_blend_epi8(channelMasks[r][2], result, LookUp(tables[2], index, high));
            _mm512_storeu_si512(out + offset, result);
        }
    }
    const int done = 64 * blocks;
    TableRowPortable(in + 3 * done, out + 3 * done, width - done, blue, green, red);
}
#endif

} // namespace

void TableRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, int width,
              const std::uint8_t* __restrict blue, const std::uint8_t* __restrict green,
              const std::uint8_t* __restrict red) {
#if TAMRICK_HAS_BYTE_PERMUTES
    if (HasBytePermutes()) {
        TableRowPermutes(in, out, width, blue, green, red);
        return;
    }
#endif
    TableRowPortable(in, out, width, blue, green, red);
}

} // namespace ops
