#include "formats/BmpPixelKernels.h"

#include "ops/FilterMath.h"

#include <cstring>

namespace bmp_kernels {

namespace {

template <typename Pixel>
[[gnu::always_inline]] inline Pixel LoadPixel(const std::uint8_t* p) {
    Pixel pixel;
    std::memcpy(&pixel, p, sizeof(Pixel)); // little-endian, as the file
    return pixel;
}

template <typename Pixel>
[[gnu::always_inline]] inline void Raw(const std::uint8_t* __restrict stored, std::uint8_t* __restrict plane,
                                       int width, FieldRule rule) {
    // Masked to the pixel's width (the shift always is), so that the
    // compiler keeps 16-bit pixels in 16-bit lanes.
    const int shift = rule.shift & (8 * static_cast<int>(sizeof(Pixel)) - 1);
    const auto mask = static_cast<Pixel>(rule.mask);
    for (int x = 0; x < width; ++x) {
        const Pixel pixel = LoadPixel<Pixel>(stored + sizeof(Pixel) * x);
        plane[x] = static_cast<std::uint8_t>(static_cast<Pixel>(pixel >> shift) & mask);
    }
}

template <typename Pixel>
[[gnu::always_inline]] inline void Scaled(const std::uint8_t* __restrict stored, std::uint8_t* __restrict plane,
                                          int width, FieldRule rule) {
    const int shift = rule.shift;
    const std::uint32_t mask = rule.mask;
    const std::uint32_t half = rule.mask / 2;
    const int bits = rule.bits;
    for (int x = 0; x < width; ++x) {
        const std::uint32_t pixel = LoadPixel<Pixel>(stored + sizeof(Pixel) * x);
        const std::uint32_t v = (pixel >> shift) & mask;
        const std::uint32_t n = (v << 8) - v + half; // v * 255 + half
        plane[x] = static_cast<std::uint8_t>((n + (n >> bits) + 1) >> bits);
    }
}

constexpr bool ScaledIsExact(int bits) {
    const std::uint32_t mask = (1u << bits) - 1;
    for (std::uint32_t v = 0; v <= mask; ++v) {
        const std::uint32_t n = v * 255 + mask / 2;
        if ((n + (n >> bits) + 1) >> bits != n / mask) {
            return false;
        }
    }
    return true;
}
static_assert(ScaledIsExact(8) && ScaledIsExact(9) && ScaledIsExact(10) && ScaledIsExact(11) &&
              ScaledIsExact(12));

// (v * a + 255 * (255 - a) + 127) / 255 is (65152 - (255 - v) * a) / 255,
// a 16-bit numerator whose quotient is a high product and a shift.
constexpr std::uint8_t OverWhiteNarrow(std::uint8_t value, std::uint8_t alpha) {
    const auto inverse = static_cast<std::uint16_t>(255 - value);
    const auto n = static_cast<std::uint16_t>(65152 - static_cast<std::uint16_t>(inverse * alpha));
    const auto high = static_cast<std::uint16_t>((static_cast<std::uint32_t>(n) * 32897u) >> 16);
    return static_cast<std::uint8_t>(high >> 7);
}

constexpr bool OverWhiteNarrowIsExact() {
    for (int v = 0; v < 256; ++v) {
        for (int a = 0; a < 256; ++a) {
            if (OverWhiteNarrow(static_cast<std::uint8_t>(v), static_cast<std::uint8_t>(a)) !=
                (v * a + 255 * (255 - a) + 127) / 255) {
                return false;
            }
        }
    }
    return true;
}
static_assert(OverWhiteNarrowIsExact());

void LookUpBytesPortable(const std::uint8_t* in, std::uint8_t* out, std::size_t count, const std::uint8_t* table) {
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = table[in[i]];
    }
}

void InterleavePortable(const std::uint8_t* __restrict blue, const std::uint8_t* __restrict green,
                        const std::uint8_t* __restrict red, std::uint8_t* __restrict out, int width) {
    for (int x = 0; x < width; ++x) {
        out[3 * x] = blue[x];
        out[3 * x + 1] = green[x];
        out[3 * x + 2] = red[x];
    }
}

void LookUpInterleavedPortable(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, int width,
                               const std::uint8_t* blue, const std::uint8_t* green, const std::uint8_t* red) {
    for (int x = 0; x < width; ++x) {
        out[3 * x] = blue[in[x]];
        out[3 * x + 1] = green[in[x]];
        out[3 * x + 2] = red[in[x]];
    }
}

#if TAMRICK_HAS_BYTE_PERMUTES
// A 256-entry table in four registers.
struct Table256 {
    __m512i quarter[4];
};

TAMRICK_BYTE_PERMUTES inline Table256 LoadTable(const std::uint8_t* table) {
    return {{_mm512_loadu_si512(table), _mm512_loadu_si512(table + 64), _mm512_loadu_si512(table + 128),
             _mm512_loadu_si512(table + 192)}};
}

// Two-register byte permutes look up the low and the high half of the
// table, bit 7 of the index chooses.
TAMRICK_BYTE_PERMUTES inline __m512i LookUp(const Table256& table, __m512i index) {
    const __m512i low = _mm512_permutex2var_epi8(table.quarter[0], index, table.quarter[1]);
    const __m512i high = _mm512_permutex2var_epi8(table.quarter[2], index, table.quarter[3]);
    return _mm512_mask_blend_epi8(_mm512_movepi8_mask(index), low, high);
}

// 64 bytes at a time: two-register byte permutes look up the low and the
// high half of the table, bit 7 of the index chooses.
TAMRICK_BYTE_PERMUTES void LookUpBytesPermutes(const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                                               const std::uint8_t* table) {
    const Table256 quarters = LoadTable(table);
    std::size_t i = 0;
    for (; i + 64 <= count; i += 64) {
        _mm512_storeu_si512(out + i, LookUp(quarters, _mm512_loadu_si512(in + i)));
    }
    LookUpBytesPortable(in + i, out + i, count - i, table);
}

// Byte j of output register r is channel (64 r + j) mod 3 of pixel
// (64 r + j) / 3: blue and green come from one two-register permute, red from
// a second, masked permute.
struct InterleaveIndex {
    alignas(64) std::uint8_t blueGreen[3][64] = {};
    alignas(64) std::uint8_t red[3][64] = {};
    __mmask64 redMask[3] = {};

    constexpr InterleaveIndex() {
        for (int r = 0; r < 3; ++r) {
            for (int j = 0; j < 64; ++j) {
                const int pixel = (64 * r + j) / 3;
                const int channel = (64 * r + j) % 3;
                blueGreen[r][j] = static_cast<std::uint8_t>(channel == 1 ? 64 + pixel : pixel);
                red[r][j] = static_cast<std::uint8_t>(pixel);
                if (channel == 2) {
                    redMask[r] |= __mmask64{1} << j;
                }
            }
        }
    }
};
constexpr InterleaveIndex kInterleave;

// 64 pixels (three output registers) at a time.
TAMRICK_BYTE_PERMUTES void InterleavePermutes(const std::uint8_t* __restrict blue,
                                              const std::uint8_t* __restrict green,
                                              const std::uint8_t* __restrict red, std::uint8_t* __restrict out,
                                              int width) {
    const auto& blueGreen = kInterleave.blueGreen;
    const auto& redIndex = kInterleave.red;
    const auto& redMask = kInterleave.redMask;
    const __m512i blueGreenIndex[3] = {_mm512_load_si512(blueGreen[0]), _mm512_load_si512(blueGreen[1]),
                                       _mm512_load_si512(blueGreen[2])};
    const __m512i redIndexes[3] = {_mm512_load_si512(redIndex[0]), _mm512_load_si512(redIndex[1]),
                                   _mm512_load_si512(redIndex[2])};
    int x = 0;
    for (; x + 64 <= width; x += 64) {
        const __m512i b = _mm512_loadu_si512(blue + x);
        const __m512i g = _mm512_loadu_si512(green + x);
        const __m512i rd = _mm512_loadu_si512(red + x);
        for (int r = 0; r < 3; ++r) {
            const __m512i bg = _mm512_permutex2var_epi8(b, blueGreenIndex[r], g);
            const __m512i result = _mm512_mask_permutexvar_epi8(bg, redMask[r], redIndexes[r], rd);
            _mm512_storeu_si512(out + 3 * static_cast<std::size_t>(x) + 64 * r, result);
        }
    }
    InterleavePortable(blue + x, green + x, red + x, out + 3 * static_cast<std::size_t>(x), width - x);
}

// Three lookups and the interleave of InterleavePermutes, in registers.
TAMRICK_BYTE_PERMUTES void LookUpInterleavedPermutes(const std::uint8_t* __restrict in,
                                                     std::uint8_t* __restrict out, int width,
                                                     const std::uint8_t* blue, const std::uint8_t* green,
                                                     const std::uint8_t* red) {
    const Table256 tables[3] = {LoadTable(blue), LoadTable(green), LoadTable(red)};
    __m512i blueGreenIndex[3];
    __m512i redIndex[3];
    for (int r = 0; r < 3; ++r) {
        blueGreenIndex[r] = _mm512_load_si512(kInterleave.blueGreen[r]);
        redIndex[r] = _mm512_load_si512(kInterleave.red[r]);
    }
    int x = 0;
    for (; x + 64 <= width; x += 64) {
        const __m512i index = _mm512_loadu_si512(in + x);
        const __m512i b = LookUp(tables[0], index);
        const __m512i g = LookUp(tables[1], index);
        const __m512i rd = LookUp(tables[2], index);
        for (int r = 0; r < 3; ++r) {
            const __m512i bg = _mm512_permutex2var_epi8(b, blueGreenIndex[r], g);
            const __m512i result = _mm512_mask_permutexvar_epi8(bg, kInterleave.redMask[r], redIndex[r], rd);
            _mm512_storeu_si512(out + 3 * static_cast<std::size_t>(x) + 64 * r, result);
        }
    }
    LookUpInterleavedPortable(in + x, out + 3 * static_cast<std::size_t>(x), width - x, blue, green, red);
}
#endif

} // namespace

TAMRICK_VECTOR_CLONES void RawPlane16(const std::uint8_t* __restrict stored, std::uint8_t* __restrict plane,
                                      int width, FieldRule rule) {
    Raw<std::uint16_t>(stored, plane, width, rule);
}

TAMRICK_VECTOR_CLONES void RawPlane32(const std::uint8_t* __restrict stored, std::uint8_t* __restrict plane,
                                      int width, FieldRule rule) {
    Raw<std::uint32_t>(stored, plane, width, rule);
}

TAMRICK_VECTOR_CLONES void ScaledPlane16(const std::uint8_t* __restrict stored, std::uint8_t* __restrict plane,
                                         int width, FieldRule rule) {
    Scaled<std::uint16_t>(stored, plane, width, rule);
}

TAMRICK_VECTOR_CLONES void ScaledPlane32(const std::uint8_t* __restrict stored, std::uint8_t* __restrict plane,
                                         int width, FieldRule rule) {
    Scaled<std::uint32_t>(stored, plane, width, rule);
}

void LookUpBytes(const std::uint8_t* in, std::uint8_t* out, std::size_t count, const std::uint8_t* table) {
#if TAMRICK_HAS_BYTE_PERMUTES
    if (HasBytePermutes()) {
        LookUpBytesPermutes(in, out, count, table);
        return;
    }
#endif
    LookUpBytesPortable(in, out, count, table);
}

TAMRICK_VECTOR_CLONES void OverWhite(std::uint8_t* __restrict plane, const std::uint8_t* __restrict alpha,
                                     std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        plane[i] = OverWhiteNarrow(plane[i], alpha[i]);
    }
}

void LookUpInterleaved(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, int width,
                       const std::uint8_t* blue, const std::uint8_t* green, const std::uint8_t* red) {
#if TAMRICK_HAS_BYTE_PERMUTES
    if (HasBytePermutes()) {
        LookUpInterleavedPermutes(in, out, width, blue, green, red);
        return;
    }
#endif
    LookUpInterleavedPortable(in, out, width, blue, green, red);
}

void Interleave(const std::uint8_t* __restrict blue, const std::uint8_t* __restrict green,
                const std::uint8_t* __restrict red, std::uint8_t* __restrict out, int width) {
#if TAMRICK_HAS_BYTE_PERMUTES
    if (HasBytePermutes()) {
        InterleavePermutes(blue, green, red, out, width);
        return;
    }
#endif
    InterleavePortable(blue, green, red, out, width);
}

} // namespace bmp_kernels
