#pragma once

// Helpers of the hand-written AVX2 loops that handle 24-bit pixels as one
// 32-bit lane each (blue in the low byte, then green and red).
#if defined(__GNUC__) && defined(__x86_64__)
#include <immintrin.h>

#include <cstdint>

namespace ops {

// Stores the low three bytes of each of eight lanes as eight packed 24-bit
// pixels: exactly 24 bytes are written.
__attribute__((target("avx2"))) inline void StoreEightPixels(__m256i pixels, std::uint8_t* out) {
    const __m256i pack = _mm256_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1, 0, 1, 2, 4, 5,
                                          6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
    const __m256i join = _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7);
    const __m256i packed = _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(pixels, pack), join);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm256_castsi256_si128(packed));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out + 16), _mm256_extracti128_si256(packed, 1));
}

// Blue, green and red lanes (each 0..255) joined into one pixel per lane.
__attribute__((target("avx2"))) inline __m256i JoinChannels(__m256i blue, __m256i green, __m256i red) {
    return _mm256_or_si256(blue, _mm256_or_si256(_mm256_slli_epi32(green, 8), _mm256_slli_epi32(red, 16)));
}

} // namespace ops
#endif
