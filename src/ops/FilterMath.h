#pragma once

#include <algorithm>
#include <cstdint>

// Hot row loops are compiled twice where the compiler supports it: for the
// machine's wider vector unit (chosen at load time) and for the baseline.
#if defined(__GNUC__) && defined(__x86_64__) && !defined(__clang__)
#define TAMRICK_VECTOR_CLONES __attribute__((target_clones("avx2", "default")))
#else
#define TAMRICK_VECTOR_CLONES
#endif

// Small integer rules shared by the filter engines.
namespace ops {

// Luminance of a pixel: (59 G + 30 R + 11 B + 50) / 100.
inline int Luminance(int blue, int green, int red) {
    return (59 * green + 30 * red + 11 * blue + 50) / 100;
}

inline int Clamp255(int v) {
    return std::clamp(v, 0, 255);
}

// (x * multiplier) >> 16 equals x / divisor for every x in 0..limit; the
// static_asserts beside each use prove it at compile time.
constexpr bool ReciprocalIsExact(int divisor, int multiplier, int limit) {
    for (int x = 0; x <= limit; ++x) {
        if (((x * multiplier) >> 16) != x / divisor) {
            return false;
        }
    }
    return true;
}

// x / 100 for 0 <= x <= 25550: a blend of two bytes by percentages, or a
// luminance sum.
constexpr int DivideBy100(int x) {
    return (x * 5243) >> 19;
}
constexpr bool DivideBy100IsExact() {
    for (int x = 0; x <= 25550; ++x) {
        if (DivideBy100(x) != x / 100) {
            return false;
        }
    }
    return true;
}
static_assert(DivideBy100IsExact());

} // namespace ops
