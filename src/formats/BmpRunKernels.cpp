#include "formats/BmpRunKernels.h"

#include <bit>

#if defined(__GNUC__) && defined(__x86_64__)
#include <immintrin.h>
#define TAMRICK_HAS_BYTE_COMPRESS 1
#define TAMRICK_BYTE_COMPRESS                                                                                \
    __attribute__((target("avx512f,avx512bw,avx512vl,avx512vbmi,avx512vbmi2,popcnt")))
#else
#define TAMRICK_HAS_BYTE_COMPRESS 0
#endif

namespace bmp_run_kernels {

namespace {

#if TAMRICK_HAS_BYTE_COMPRESS
bool HasByteCompress() {
    static const bool has = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                            __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512vbmi") &&
                            __builtin_cpu_supports("avx512vbmi2") && __builtin_cpu_supports("popcnt");
    return has;
}

// Byte j takes the index of code j / 8.
struct SpreadIndex {
    alignas(64) std::uint8_t bytes[64] = {};
    constexpr SpreadIndex() {
        for (int j = 0; j < 64; ++j) {
            bytes[j] = static_cast<std::uint8_t>(2 * (j / 8) + 1);
        }
    }
};
constexpr SpreadIndex kSpread;

// Each group of eight codes: the eight indices are spread to eight bytes
// each, and a compress keeps the first `count` bytes of each eight (the byte
// (1 << count) - 1 of the mask). A group is taken up to its first run that is
// not short, which a masked store takes when it is at most 64 long.
TAMRICK_BYTE_COMPRESS const std::uint8_t* Expand(const std::uint8_t* code, const std::uint8_t* last,
                                                 std::uint8_t* row, int& x, int width) {
    const __m128i counts = _mm_setr_epi8(0, 2, 4, 6, 8, 10, 12, 14, -1, -1, -1, -1, -1, -1, -1, -1);
    const __m128i runBits = _mm_setr_epi8(0, 1, 3, 7, 15, 31, 63, 127, -1, 0, 0, 0, 0, 0, 0, 0);
    const __m512i spreadIndex = _mm512_load_si512(kSpread.bytes);
    const __m128i one = _mm_set1_epi8(1);
    const __m128i seven = _mm_set1_epi8(7);
    int at = x;
    // Room for a group (at most 64 pixels) and one longer run (at most 64).
    while (last - code >= 16 && at + 128 <= width) {
        const __m128i codes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(code));
        const __m128i count = _mm_shuffle_epi8(codes, counts);
        // 1..8 each: count - 1 at most 7 (a 0 wraps to 255).
        const auto shortRuns =
            static_cast<unsigned>(_mm_cmple_epu8_mask(_mm_sub_epi8(count, one), seven) & 0xFF);
        auto keep = static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_shuffle_epi8(runBits, count)));
        const __m512i indices =
            _mm512_maskz_permutexvar_epi8(~__mmask64{0}, spreadIndex, _mm512_zextsi128_si512(codes));
        if (shortRuns == 0xFF) {
            // The usual case, kept apart so that the next load does not wait
            // for this one's counts.
            _mm512_storeu_si512(row + at, _mm512_maskz_compress_epi8(keep, indices));
            at += static_cast<int>(_mm_popcnt_u64(keep));
            code += 16;
            continue;
        }
        const int taken = std::countr_one(shortRuns); // the codes before the first other one
        keep &= (std::uint64_t{1} << (8 * taken)) - 1;
        _mm512_storeu_si512(row + at, _mm512_maskz_compress_epi8(keep, indices));
        at += static_cast<int>(_mm_popcnt_u64(keep));
        code += 2 * taken;
        // A run of 9 to 64 is one masked store (zeros beyond it); an escape
        // or a longer run is the caller's.
        const int run = code[0];
        if (run == 0 || run > 64) {
            break;
        }
        const __mmask64 fill = run == 64 ? ~__mmask64{0} : (__mmask64{1} << run) - 1;
        _mm512_storeu_si512(row + at, _mm512_maskz_set1_epi8(fill, static_cast<char>(code[1])));
        at += run;
        code += 2;
    }
    x = at;
    return code;
}
#endif

} // namespace

const std::uint8_t* ExpandShortRuns(const std::uint8_t* code, const std::uint8_t* last, std::uint8_t* row,
                                    int& x, int width) {
#if TAMRICK_HAS_BYTE_COMPRESS
    if (HasByteCompress()) {
        return Expand(code, last, row, x, width);
    }
#else
    (void)last, (void)row, (void)x, (void)width;
#endif
    return code;
}

} // namespace bmp_run_kernels
