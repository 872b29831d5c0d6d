#include "view/DisplayKernels.h"

#include "ops/FilterMath.h"

#include <algorithm>

namespace display {

namespace {

// x / d as (x * kReciprocal[d]) >> 16 for every x up to kMaxReducedSum.
constexpr int kReciprocal[9] = {0, 65536, 32768, 21846, 16384, 13108, 10923, 9363, 8192};
constexpr bool ReciprocalsAreExact() {
    for (int d = 1; d <= 8; ++d) {
        if (!ops::ReciprocalIsExact(d, kReciprocal[d], kMaxReducedSum)) {
            return false;
        }
    }
    return true;
}
static_assert(ReciprocalsAreExact());

TAMRICK_VECTOR_CLONES void AddRowLoop(const std::uint8_t* __restrict row, std::uint16_t* __restrict sums,
                                      std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        sums[i] = static_cast<std::uint16_t>(sums[i] + row[i]);
    }
}

TAMRICK_VECTOR_CLONES void DivideLoop(std::uint16_t* __restrict sums, std::size_t count, std::uint32_t multiplier) {
    for (std::size_t i = 0; i < count; ++i) {
        sums[i] = static_cast<std::uint16_t>((sums[i] * multiplier) >> 16);
    }
}

TAMRICK_VECTOR_CLONES void QuantiseLoop(std::uint8_t* __restrict row, const std::uint8_t* __restrict thresholds,
                                        std::size_t count, std::uint8_t highMask, std::uint8_t step) {
    const auto lowMask = static_cast<std::uint8_t>(~highMask);
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t c = row[i];
        const auto high = static_cast<std::uint8_t>(c & highMask);
        // The top level's step up would pass 255: it stops there.
        const auto up = static_cast<std::uint8_t>(std::min(high + step, 255));
        row[i] = thresholds[i] > (c & lowMask) ? high : up;
    }
}

TAMRICK_VECTOR_CLONES void ToRgb32Loop(const std::uint8_t* __restrict bgr, std::uint32_t* __restrict out,
                                       std::size_t pixels) {
    for (std::size_t i = 0; i < pixels; ++i) {
        out[i] = 0xFF000000u | static_cast<std::uint32_t>(bgr[3 * i + 2]) << 16 |
                 static_cast<std::uint32_t>(bgr[3 * i + 1]) << 8 | bgr[3 * i];
    }
}

TAMRICK_VECTOR_CLONES void XorLoop(const std::uint32_t* __restrict in, const std::uint32_t* __restrict mask,
                                   std::uint32_t* __restrict out, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = in[i] ^ mask[i];
    }
}

// Means of `blocks` runs of `count` pixels each; inlined into callers with a
// constant count, whose block loop then unrolls.
[[gnu::always_inline]] inline void ReduceBlocks(const std::uint16_t* __restrict sums, int count, int blocks,
                                                const std::uint8_t* blue, const std::uint8_t* green,
                                                const std::uint8_t* red, std::uint8_t* __restrict out) {
    const auto multiplier = static_cast<unsigned>(kReciprocal[count]);
    for (int j = 0; j < blocks; ++j, sums += 3 * count, out += 3) {
        unsigned b = 0, g = 0, r = 0;
        for (int n = 0; n < count; ++n) {
            b += sums[3 * n];
            g += sums[3 * n + 1];
            r += sums[3 * n + 2];
        }
        out[0] = blue[(b * multiplier) >> 16];
        out[1] = green[(g * multiplier) >> 16];
        out[2] = red[(r * multiplier) >> 16];
    }
}

template <int kBlock>
void ReduceFixed(const std::uint16_t* sums, int blocks, const std::uint8_t* blue, const std::uint8_t* green,
                 const std::uint8_t* red, std::uint8_t* out) {
    ReduceBlocks(sums, kBlock, blocks, blue, green, red, out);
}

void ReduceAny(const std::uint16_t* sums, int count, int blocks, const std::uint8_t* blue,
               const std::uint8_t* green, const std::uint8_t* red, std::uint8_t* out) {
    ReduceBlocks(sums, count, blocks, blue, green, red, out);
}

} // namespace

void AddRow(const std::uint8_t* row, std::uint16_t* sums, std::size_t count) {
    AddRowLoop(row, sums, count);
}

void DivideSums(std::uint16_t* sums, std::size_t count, int divisor) {
    if (divisor > 1) {
        DivideLoop(sums, count, static_cast<std::uint32_t>(kReciprocal[divisor]));
    }
}

void ReduceColumns(const std::uint16_t* sums, int pixels, int block, const std::uint8_t* blue,
                   const std::uint8_t* green, const std::uint8_t* red, std::uint8_t* out) {
    const int whole = pixels / block;
    switch (block) {
    case 2:
        ReduceFixed<2>(sums, whole, blue, green, red, out);
        break;
    case 3:
        ReduceFixed<3>(sums, whole, blue, green, red, out);
        break;
    case 4:
        ReduceFixed<4>(sums, whole, blue, green, red, out);
        break;
    default:
        ReduceAny(sums, block, whole, blue, green, red, out);
        break;
    }
    const int rest = pixels - whole * block;
    if (rest > 0) {
        ReduceAny(sums + 3 * static_cast<std::size_t>(whole) * block, rest, 1, blue, green, red, out + 3 * whole);
    }
}

void QuantiseBytes(std::uint8_t* row, const std::uint8_t* thresholds, std::size_t count, std::uint8_t highMask) {
    QuantiseLoop(row, thresholds, count, highMask, static_cast<std::uint8_t>(-highMask));
}

void ToRgb32(const std::uint8_t* bgr, std::uint32_t* out, std::size_t pixels) {
    ToRgb32Loop(bgr, out, pixels);
}

void XorPixels(const std::uint32_t* in, const std::uint32_t* mask, std::uint32_t* out, std::size_t count) {
    XorLoop(in, mask, out, count);
}

} // namespace display
