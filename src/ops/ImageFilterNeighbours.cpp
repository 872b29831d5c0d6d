// Blur, Sharpen, Despeckle, Diffuse and Emboss: the three-row neighbourhood
// filters whose result is formed per byte or per pixel from the 3 x 3 block.
#include "image/CDibImage.h"
#include "ops/CImageFilter.h"
#include "ops/FilterMath.h"
#include "ops/PlanarRows.h"
#include "ops/RowPasses.h"

#include <cstdlib>
#include <cstring>

namespace {

using ops::Clamp255;

constexpr int kDivideBy9 = 7282;  // for S <= 9 x 255
constexpr int kDivideBy12 = 5462; // for 4c + N <= 12 x 255
static_assert(ops::ReciprocalIsExact(9, kDivideBy9, 9 * 255));
static_assert(ops::ReciprocalIsExact(12, kDivideBy12, 12 * 255));

// One byte of Blur or Sharpen from the centre c and the eight neighbours' sum N.
template <int Strength> inline std::uint8_t ConvolvePixel(std::int16_t c, std::int16_t n) {
    using I = std::int16_t;
    using U = std::uint16_t;
    if constexpr (Strength == 1) {
        return static_cast<std::uint8_t>(static_cast<U>(8 * c + n) >> 4);
    } else if constexpr (Strength == 2) {
        return static_cast<std::uint8_t>(
            (static_cast<std::uint32_t>(static_cast<U>(4 * c + n)) * kDivideBy12) >> 16);
    } else if constexpr (Strength == 3) {
        return static_cast<std::uint8_t>((static_cast<std::uint32_t>(static_cast<U>(c + n)) * kDivideBy9) >>
                                         16);
    } else if constexpr (Strength == 4) {
        return static_cast<std::uint8_t>(
            std::clamp<I>(static_cast<I>(c + (static_cast<I>(c - (n >> 3)) >> 1)), 0, 255));
    } else if constexpr (Strength == 5) {
        return static_cast<std::uint8_t>(std::clamp<I>(static_cast<I>(3 * c - (n >> 2)), 0, 255));
    } else {
        return static_cast<std::uint8_t>(std::clamp<I>(static_cast<I>(9 * c - n), 0, 255));
    }
}

// Work block of a row rule: the column sums with one pixel of margin each side.
std::size_t SumsBytes(std::uint32_t rowBytes) {
    return (rowBytes + 8) * sizeof(std::int16_t);
}

template <int Strength>
TAMRICK_VECTOR_CLONES void ConvolveRow(const std::int16_t* __restrict sums,
                                       const std::uint8_t* __restrict cur, std::uint8_t* __restrict out,
                                       int pixelBytes) {
    for (int j = 0; j < pixelBytes; ++j) {
        const auto c = static_cast<std::int16_t>(cur[j]);
        const auto n = static_cast<std::int16_t>(sums[j - 3] + sums[j] + sums[j + 3] - c);
        out[j] = ConvolvePixel<Strength>(c, n);
    }
}

template <int Strength>
int ConvolveRows(const std::uint8_t* src, std::uint8_t* dst, int width, int height, std::uint32_t rowBytes) {
    const int pixelBytes = 3 * width;
    return ops::ThreeRowPass(src, dst, height, rowBytes, SumsBytes(rowBytes),
                             [=](const std::uint8_t* prev, const std::uint8_t* cur, const std::uint8_t* next,
                                 std::uint8_t* out, std::uint8_t* work) {
                                 std::int16_t* sums = reinterpret_cast<std::int16_t*>(work) + 3;
                                 ops::SumThreeRows(prev, cur, next, sums, pixelBytes);
                                 ConvolveRow<Strength>(sums, cur, out, pixelBytes);
                                 std::memcpy(out + pixelBytes, cur + pixelBytes, rowBytes - pixelBytes);
                             });
}

// Emboss of one row from the planes of its neighbours A and B, `stepA` and
// `stepB` pixels to the side: D is the channel difference A - B of greatest
// magnitude (the largest winning a tie), and every channel becomes
// clamp(foreground + D x depth). 16-bit throughout: |D x depth| <= 2550.
TAMRICK_VECTOR_CLONES void EmbossRow(ops::RowPlanes a, int stepA, ops::RowPlanes b, int stepB,
                                     std::uint8_t* __restrict out, int width, int depth,
                                     const std::int16_t foreground[3]) {
    using I = std::int16_t;
    const I fb = foreground[0], fg = foreground[1], fr = foreground[2];
    const auto depth16 = static_cast<I>(depth);
    // Its own clamp rather than Clamp255: this one keeps the loop in 16-bit
    // lanes, which is measurably faster here.
    const auto clamp = [](int v) { return static_cast<std::uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v)); };
    for (int x = 0; x < width; ++x) {
        const auto db = static_cast<I>(a.blue[x + stepA] - b.blue[x + stepB]);
        const auto dg = static_cast<I>(a.green[x + stepA] - b.green[x + stepB]);
        const auto dr = static_cast<I>(a.red[x + stepA] - b.red[x + stepB]);
        const I largest = std::max(std::max(db, dg), dr);
        const I smallest = std::min(std::min(db, dg), dr);
        const I strongest = (smallest < 0 && -smallest > largest) ? smallest : largest;
        const auto shift = static_cast<I>(strongest * depth16);
        out[3 * x] = clamp(static_cast<I>(fb + shift));
        out[3 * x + 1] = clamp(static_cast<I>(fg + shift));
        out[3 * x + 2] = clamp(static_cast<I>(fr + shift));
    }
}

// Per byte: v = three quarters neighbour mean, one quarter centre, and whether
// v lies at least `threshold` from the centre.
TAMRICK_VECTOR_CLONES void DespeckleValues(const std::int16_t* __restrict sums,
                                           const std::uint8_t* __restrict cur,
                                           std::uint8_t* __restrict smoothed, std::uint8_t* __restrict far,
                                           int pixelBytes, int threshold) {
    for (int j = 0; j < pixelBytes; ++j) {
        const int c = cur[j];
        const int s = sums[j - 3] + sums[j] + sums[j + 3];
        const int v = (((s - c) >> 3) * 3 + c) >> 2;
        smoothed[j] = static_cast<std::uint8_t>(v);
        far[j] = static_cast<std::uint8_t>((v - c >= threshold) | (c - v >= threshold));
    }
}

// Per pixel: all three smoothed bytes when any of them lies far from its
// centre, else the source pixel.
TAMRICK_VECTOR_CLONES void ChooseDespeckled(const std::uint8_t* __restrict cur,
                                            const std::uint8_t* __restrict smoothed,
                                            const std::uint8_t* __restrict far, std::uint8_t* __restrict out,
                                            int width) {
    for (int x = 0; x < width; ++x) {
        const auto mask = static_cast<std::uint8_t>(-(far[3 * x] | far[3 * x + 1] | far[3 * x + 2]));
        for (int c = 0; c < 3; ++c) {
            out[3 * x + c] =
                static_cast<std::uint8_t>((smoothed[3 * x + c] & mask) | (cur[3 * x + c] & ~mask));
        }
    }
}

// A small per-band random stream for Diffuse, seeded from rand() so that
// seeding rand() makes the whole filter repeatable.
class RowRandom {
public:
    explicit RowRandom(std::uint32_t seed) : m_state(seed * 2654435761u + 0x9E3779B9u) {}
    int NextNine() {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 17;
        m_state ^= m_state << 5;
        return static_cast<int>(((m_state >> 8) * 9ull) >> 24);
    }

private:
    std::uint32_t m_state;
};

} // namespace

int CImageFilter::Convolve3x3(int strength) {
    m_pixelOp = strength;
    if (!Ready()) {
        return 1;
    }
    const std::uint8_t* src = m_src->Bits();
    std::uint8_t* dst = m_dst->MutableBits();
    switch (strength) {
    case 1:
        return ConvolveRows<1>(src, dst, m_width, m_height, m_rowBytes);
    case 2:
        return ConvolveRows<2>(src, dst, m_width, m_height, m_rowBytes);
    case 3:
        return ConvolveRows<3>(src, dst, m_width, m_height, m_rowBytes);
    case 4:
        return ConvolveRows<4>(src, dst, m_width, m_height, m_rowBytes);
    case 5:
        return ConvolveRows<5>(src, dst, m_width, m_height, m_rowBytes);
    case 6:
        return ConvolveRows<6>(src, dst, m_width, m_height, m_rowBytes);
    default:
        return 0;
    }
}

int CImageFilter::Despeckle(int threshold) {
    if (!Ready()) {
        return 1;
    }
    const int pixelBytes = 3 * m_width;
    const std::uint32_t rowBytes = m_rowBytes;
    const std::size_t sumsBytes = SumsBytes(rowBytes);
    return ops::ThreeRowPass(m_src->Bits(), m_dst->MutableBits(), m_height, rowBytes,
                             sumsBytes + 2 * rowBytes,
                             [=](const std::uint8_t* prev, const std::uint8_t* cur, const std::uint8_t* next,
                                 std::uint8_t* out, std::uint8_t* work) {
                                 std::int16_t* sums = reinterpret_cast<std::int16_t*>(work) + 3;
                                 std::uint8_t* smoothed = work + sumsBytes;
                                 std::uint8_t* far = smoothed + rowBytes;
                                 ops::SumThreeRows(prev, cur, next, sums, pixelBytes);
                                 DespeckleValues(sums, cur, smoothed, far, pixelBytes, threshold);
                                 ChooseDespeckled(cur, smoothed, far, out, pixelBytes / 3);
                                 std::memcpy(out + pixelBytes, cur + pixelBytes, rowBytes - pixelBytes);
                             });
}

int CImageFilter::Diffuse() {
    if (!Ready()) {
        return 1;
    }
    // Rows go in chunks with a stream each, so the result does not depend on
    // how many cores share the work.
    constexpr int kChunkRows = 64;
    const int chunks = (m_height + kChunkRows - 1) / kChunkRows;
    const auto base = static_cast<std::uint32_t>(std::rand());
    const std::uint8_t* src = m_src->Bits();
    std::uint8_t* dst = m_dst->MutableBits();
    const std::uint32_t rowBytes = m_rowBytes;
    const int lastPixel = 3 * (m_width - 1);
    return ops::ForEachStoredRow(chunks, 0, [&](int chunk, std::uint8_t*) {
        RowRandom random(base + static_cast<std::uint32_t>(chunk) * 0x632BE5ABu);
        const int yEnd = std::min(m_height, (chunk + 1) * kChunkRows);
        for (int y = chunk * kChunkRows; y < yEnd; ++y) {
            const std::uint8_t* rows[3];
            rows[1] = src + static_cast<std::size_t>(y) * rowBytes;
            rows[0] = y > 0 ? rows[1] - rowBytes : rows[1];
            rows[2] = y + 1 < m_height ? rows[1] + rowBytes : rows[1];
            std::uint8_t* out = dst + static_cast<std::size_t>(y) * rowBytes;
            for (int x = 0; x <= lastPixel; x += 3) {
                const int k = random.NextNine();
                int column = x + 3 * (k % 3 - 1);
                if (column < 0 || column > lastPixel) {
                    column = x;
                }
                std::memcpy(out + x, rows[k / 3] + column, 3);
            }
        }
    });
}

int CImageFilter::Emboss(int direction, int depth, ColorWord foreground) {
    SetColorA(foreground);
    if (!Ready()) {
        return 1;
    }
    // Neighbours A and B per direction: row (0 previous, 1 current, 2 next) and
    // column step (-1 left, 0 centre, 1 right).
    struct Pick {
        int rowA, stepA, rowB, stepB;
    };
    static constexpr Pick kPicks[8] = {{2, 1, 0, -1}, {2, 0, 0, 0}, {2, -1, 0, 1}, {1, 1, 1, -1},
                                       {0, -1, 2, 1}, {0, 0, 2, 0}, {0, 1, 2, -1}, {1, -1, 1, 1}};
    const Pick pick = kPicks[direction & 7];
    const std::int16_t foreBgr[3] = {m_colorA[2], m_colorA[1], m_colorA[0]};
    const int width = m_width;
    return ops::ForEachRowAsPlanes(m_src->Bits(), m_dst->MutableBits(), width, m_height, m_rowBytes,
                                   [&](const ops::RowPlanes& prev, const ops::RowPlanes& cur,
                                       const ops::RowPlanes& next, std::uint8_t* out) {
                                       const ops::RowPlanes rows[3] = {prev, cur, next};
                                       EmbossRow(rows[pick.rowA], pick.stepA, rows[pick.rowB], pick.stepB, out,
                                                 width, depth, foreBgr);
                                   });
}
