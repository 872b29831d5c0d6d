#pragma once

#include <algorithm>
#include <cstdint>

// Hot row loops are compiled twice where the compiler supports it: for the
// machine's wider vector unit (chosen at load time) and for the baseline.
#if defined(__GNUC__) && defined(__x86_64__) && !defined(__clang__)
#define TAMRICK_VECTOR_CLONES __attribute__((target_clones("arch=x86-64-v4", "avx2", "default")))
#else
#define TAMRICK_VECTOR_CLONES
#endif

// Loops written with 64-byte vector byte permutes, chosen at run time on
// machines that have them (HasBytePermutes); the others take the plain loop.
#if defined(__GNUC__) && defined(__x86_64__)
#include <immintrin.h>
#define TAMRICK_HAS_BYTE_PERMUTES 1
#define TAMRICK_BYTE_PERMUTES __attribute__((target("avx512f,avx512bw,avx512vbmi")))
inline bool HasBytePermutes() {
    static const bool has = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                            __builtin_cpu_supports("avx512vbmi");
    return has;
}
#else
#define TAMRICK_HAS_BYTE_PERMUTES 0
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

// The same quotient with 16-bit lanes: the high half of a 16 x 16-bit
// product, shifted by 6.
constexpr std::uint16_t DivideBy100Narrow(std::uint16_t x) {
    return static_cast<std::uint16_t>(static_cast<std::uint16_t>((static_cast<std::uint32_t>(x) * 41944u) >> 16) >> 6);
}
constexpr bool DivideBy100NarrowIsExact() {
    for (int x = 0; x <= 25550; ++x) {
        if (DivideBy100Narrow(static_cast<std::uint16_t>(x)) != x / 100) {
            return false;
        }
    }
    return true;
}
static_assert(DivideBy100NarrowIsExact());

// Truncated quotients by one divisor d (1..65536) of numerators with
// |x| <= 32768, as a multiplication: with m = ceil(2^32 / d), the error of
// |x| m / 2^32 against |x| / d stays below 1 / d, so the floor is exact.
class SmallDivisor {
public:
    explicit SmallDivisor(int divisor)
        : m_multiplier(((std::uint64_t{1} << 32) + static_cast<std::uint64_t>(divisor) - 1) /
                       static_cast<std::uint64_t>(divisor)) {}
    int Divide(int x) const {
        const std::uint64_t magnitude = static_cast<std::uint64_t>(x < 0 ? -x : x);
        const int quotient = static_cast<int>((magnitude * m_multiplier) >> 32);
        return x < 0 ? -quotient : quotient;
    }

private:
    std::uint64_t m_multiplier;
};

} // namespace ops
