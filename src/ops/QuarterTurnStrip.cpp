#include "ops/QuarterTurnStrip.h"

#include "ops/FilterMath.h"

#include <cstring>

namespace ops {

namespace {

// Copies one pixel as four bytes: the fourth byte read is the next source
// byte, the fourth byte written the first of the next target pixel, which is
// written after it.
inline void CopyPixelWide(const std::uint8_t* from, std::uint8_t* to) {
    std::uint32_t word;
    std::memcpy(&word, from, 4);
    std::memcpy(to, &word, 4);
}

// Target pixels begin..end-1 of every row of the strip, one pixel at a time.
// The last target pixel of each row, and every pixel of the source's last
// stored row, go byte by byte.
void TurnStripPixels(const std::uint8_t* first, std::ptrdiff_t storedStep, int columnStep,
                     std::uint8_t* const* rows, int count, int begin, int end, int width, int lastStoredIndex) {
    for (int i = begin; i < end; ++i) {
        const std::uint8_t* source = first + i * storedStep;
        const bool edge = i == width - 1 || i == lastStoredIndex;
        for (int j = 0; j < count; ++j) {
            const std::uint8_t* from = source + 3 * columnStep * j;
            std::uint8_t* to = rows[j] + 3 * i;
            if (edge) {
                std::memcpy(to, from, 3);
            } else {
                CopyPixelWide(from, to);
            }
        }
    }
}

#if TAMRICK_HAS_BYTE_PERMUTES
// GCC 12 takes the undefined registers inside its own vector intrinsics for
// uninitialised variables.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

// Transposes 16 x 16 32-bit values: register k becomes column k.
TAMRICK_BYTE_PERMUTES void Transpose16(__m512i r[16]) {
    __m512i t[16];
    __m512i u[16];
    for (int k = 0; k < 8; ++k) {
        t[2 * k] = _mm512_unpacklo_epi32(r[2 * k], r[2 * k + 1]);
        t[2 * k + 1] = _mm512_unpackhi_epi32(r[2 * k], r[2 * k + 1]);
    }
    for (int k = 0; k < 4; ++k) {
        u[4 * k] = _mm512_unpacklo_epi64(t[4 * k], t[4 * k + 2]);
        u[4 * k + 1] = _mm512_unpackhi_epi64(t[4 * k], t[4 * k + 2]);
        u[4 * k + 2] = _mm512_unpacklo_epi64(t[4 * k + 1], t[4 * k + 3]);
        u[4 * k + 3] = _mm512_unpackhi_epi64(t[4 * k + 1], t[4 * k + 3]);
    }
    for (int k = 0; k < 4; ++k) {
        t[k] = _mm512_shuffle_i32x4(u[k], u[4 + k], 0x88);
        t[4 + k] = _mm512_shuffle_i32x4(u[k], u[4 + k], 0xdd);
        t[8 + k] = _mm512_shuffle_i32x4(u[8 + k], u[12 + k], 0x88);
        t[12 + k] = _mm512_shuffle_i32x4(u[8 + k], u[12 + k], 0xdd);
    }
    for (int k = 0; k < 8; ++k) {
        r[k] = _mm512_shuffle_i32x4(t[k], t[8 + k], 0x88);
        r[8 + k] = _mm512_shuffle_i32x4(t[k], t[8 + k], 0xdd);
    }
}

// Whole blocks of 16 x 16 pixels: 16 source runs of 48 bytes are spread to
// one pixel per 32-bit lane (reversed when the columns run leftwards),
// transposed, packed back to 48 bytes and stored into the 16 target rows.
// Masked loads and stores touch exactly the 48 bytes of each run.
TAMRICK_BYTE_PERMUTES int TurnStripBlocks(const std::uint8_t* first, std::ptrdiff_t storedStep, int columnStep,
                                          std::uint8_t* const* rows, int width) {
    alignas(64) std::uint8_t spread[64];
    alignas(64) std::uint8_t pack[64] = {};
    for (int lane = 0; lane < 16; ++lane) {
        const int pixel = columnStep > 0 ? lane : 15 - lane;
        for (int b = 0; b < 4; ++b) {
            spread[4 * lane + b] = static_cast<std::uint8_t>(3 * pixel + (b < 3 ? b : 0));
        }
        for (int b = 0; b < 3; ++b) {
            pack[3 * lane + b] = static_cast<std::uint8_t>(4 * lane + b);
        }
    }
    const __m512i spreadIndex = _mm512_load_si512(spread);
    const __m512i packIndex = _mm512_load_si512(pack);
    constexpr __mmask64 kRun = (__mmask64{1} << 48) - 1;
    // The run of each source row starts at its lowest pixel.
    const std::ptrdiff_t runStart = columnStep > 0 ? 0 : -45;
    const int blocks = width / 16;
    for (int block = 0; block < blocks; ++block) {
        __m512i r[16];
        for (int k = 0; k < 16; ++k) {
            const std::uint8_t* run = first + (16 * block + k) * storedStep + runStart;
            r[k] = _mm512_permutexvar_epi8(spreadIndex, _mm512_maskz_loadu_epi8(kRun, run));
        }
        Transpose16(r);
        for (int j = 0; j < 16; ++j) {
            _mm512_mask_storeu_epi8(rows[j] + 48 * block, kRun, _mm512_permutexvar_epi8(packIndex, r[j]));
        }
    }
    return 16 * blocks;
}
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif
#endif

} // namespace

void TurnStrip(const std::uint8_t* first, std::ptrdiff_t storedStep, int columnStep, std::uint8_t* const* rows,
               int count, int width, int lastStoredIndex) {
    int done = 0;
#if TAMRICK_HAS_BYTE_PERMUTES
    if (count == kTurnStrip && HasBytePermutes()) {
        done = TurnStripBlocks(first, storedStep, columnStep, rows, width);
    }
#endif
    TurnStripPixels(first, storedStep, columnStep, rows, count, done, width, width, lastStoredIndex);
}

} // namespace ops
