// Find Edge: four directional sums per pixel, the strongest direction deciding
// whether the pixel is an edge and how dark it becomes.
#include "image/CDibImage.h"
#include "ops/CImageFilter.h"
#include "ops/FilterMath.h"
#include "ops/RowPasses.h"
#include "platform/HeapBlock.h"

#include <cstdlib>
#include <cstring>

namespace {

// Absolute directional sums of Find Edge for byte j, given its left and right
// neighbours' byte positions (the same byte at the row's ends).
inline void EdgeSumsAt(const std::uint8_t* __restrict p, const std::uint8_t* __restrict c,
                       const std::uint8_t* __restrict n, int j, int l, int r, std::uint16_t* __restrict a1,
                       std::uint16_t* __restrict a2, std::uint16_t* __restrict a3,
                       std::uint16_t* __restrict a4) {
    const int d1 = (p[l] + p[j] + p[r]) - (n[l] + n[j] + n[r]);
    const int abs1 = std::abs(d1);
    const int d2 = c[l] + n[l] + abs1 - c[r] - p[r];
    const int d3 = (p[l] + c[l] + n[l]) - (p[r] + c[r] + n[r]);
    const int d4 = (p[j] + p[r] + c[r]) - (c[l] + n[l] + n[j]);
    a1[j] = static_cast<std::uint16_t>(abs1);
    a2[j] = static_cast<std::uint16_t>(std::abs(d2));
    a3[j] = static_cast<std::uint16_t>(std::abs(d3));
    a4[j] = static_cast<std::uint16_t>(std::abs(d4));
}

TAMRICK_VECTOR_CLONES void FormEdgeSums(const std::uint8_t* __restrict p, const std::uint8_t* __restrict c,
                                        const std::uint8_t* __restrict n, int pixelBytes,
                                        std::uint16_t* __restrict a1, std::uint16_t* __restrict a2,
                                        std::uint16_t* __restrict a3, std::uint16_t* __restrict a4) {
    const int last = pixelBytes - 3;
    for (int j = 3; j < last; ++j) {
        EdgeSumsAt(p, c, n, j, j - 3, j + 3, a1, a2, a3, a4);
    }
    for (int j = 0; j < std::min(3, pixelBytes); ++j) {
        EdgeSumsAt(p, c, n, j, j >= 3 ? j - 3 : j, j < last ? j + 3 : j, a1, a2, a3, a4);
    }
    for (int j = std::max(last, 3); j < pixelBytes; ++j) {
        EdgeSumsAt(p, c, n, j, j >= 3 ? j - 3 : j, j < last ? j + 3 : j, a1, a2, a3, a4);
    }
    for (std::uint16_t* plane : {a1, a2, a3, a4}) {
        plane[pixelBytes] = plane[pixelBytes + 1] = 0;
    }
}

// At every j (pixel starts j = 3x are used): the direction with the greatest
// three-channel strength, an earlier one keeping its place on a tie; whether
// the pixel is an edge (a winning channel above 32); and the darkening amount
// k = min((strength + 1) / 3, 255).
TAMRICK_VECTOR_CLONES void PickEdgeDirection(const std::uint16_t* __restrict a1,
                                             const std::uint16_t* __restrict a2,
                                             const std::uint16_t* __restrict a3,
                                             const std::uint16_t* __restrict a4,
                                             std::uint16_t* __restrict winner, std::uint16_t* __restrict edge,
                                             std::uint16_t* __restrict darkening, int pixelBytes) {
    for (int j = 0; j < pixelBytes; ++j) {
        std::uint16_t best = 0;
        std::uint16_t top = static_cast<std::uint16_t>(a1[j] + a1[j + 1] + a1[j + 2]);
        const auto s2 = static_cast<std::uint16_t>(a2[j] + a2[j + 1] + a2[j + 2]);
        const auto s3 = static_cast<std::uint16_t>(a3[j] + a3[j + 1] + a3[j + 2]);
        const auto s4 = static_cast<std::uint16_t>(a4[j] + a4[j + 1] + a4[j + 2]);
        best = s2 > top ? 1 : best;
        top = s2 > top ? s2 : top;
        best = s3 > top ? 2 : best;
        top = s3 > top ? s3 : top;
        best = s4 > top ? 3 : best;
        top = s4 > top ? s4 : top;
        std::uint16_t largest = 0;
        for (int c = 0; c < 3; ++c) {
            const std::uint16_t value = best == 0   ? a1[j + c]
                                        : best == 1 ? a2[j + c]
                                        : best == 2 ? a3[j + c]
                                                    : a4[j + c];
            largest = value > largest ? value : largest;
        }
        winner[j] = best;
        edge[j] = largest > 32 ? 1 : 0;
        darkening[j] = static_cast<std::uint16_t>(std::min((top + 1) / 3, 255));
    }
}

// All ones when `on`, else zero.
inline std::uint16_t MaskOf(bool on) {
    return static_cast<std::uint16_t>(-static_cast<int>(on));
}

// How Find Edge colours a byte; the same for the whole picture.
struct EdgeColouring {
    int transparency;
    bool keepOriginal;
    bool darken;         // "Darken Color" rather than "Default Line"
    int backgroundBlend; // (100 - t) x the background's blue, plus the rounding half
};

// The output bytes of one row. A byte's pixel-wide values (winning direction,
// edge flag, darkening) sit at its pixel's first byte, `phase[j]` (j mod 3)
// bytes back; `background[j]` is the background colour's byte for j's channel.
TAMRICK_VECTOR_CLONES void
ColourEdgeBytes(const std::uint8_t* __restrict cur, const std::uint16_t* __restrict a1,
                const std::uint16_t* __restrict a2, const std::uint16_t* __restrict a3,
                const std::uint16_t* __restrict a4, const std::uint16_t* __restrict winner,
                const std::uint16_t* __restrict edge, const std::uint16_t* __restrict darkening,
                const std::uint16_t* __restrict phase, const std::uint16_t* __restrict background,
                std::uint8_t* __restrict out, int pixelBytes, EdgeColouring how) {
    // 16-bit arithmetic throughout (every intermediate fits), so that a
    // vector holds as many bytes as it can.
    using U = std::uint16_t;
    const auto t = static_cast<U>(how.transparency);
    const auto rest = static_cast<U>(100 - how.transparency);
    const auto blendBase = static_cast<U>(how.backgroundBlend);
    // The options as all-ones or all-zero masks: choices by masking keep the
    // loop free of branches, so that it vectorises.
    const U keepMask = how.keepOriginal ? 0xFFFF : 0;
    const U darkenMask = how.darken ? 0xFFFF : 0;
    const U exactMask = how.transparency < 1 ? 0xFFFF : 0;
    // x / 100 for x <= 25550: the high half of x times 41944, shifted by 6.
    const auto divideBy100 = [](U x) {
        return static_cast<U>(((static_cast<std::uint32_t>(x) * 41944u) >> 16) >> 6);
    };
    for (int j = 0; j < pixelBytes; ++j) {
        // The pixel's values sit at its first byte, phase[j] = j mod 3 back.
        const U ph = phase[j];
        const U first = MaskOf(ph == 0);
        const U second = MaskOf(ph == 1);
        const U third = MaskOf(ph == 2);
        const auto pick = [&](const std::uint16_t* v) {
            return static_cast<U>((v[j] & first) | (v[j - 1] & second) | (v[j - 2] & third));
        };
        const U w = pick(winner);
        const U edgeMask = static_cast<U>(-pick(edge));
        const U k = pick(darkening);
        const U a = static_cast<U>((a1[j] & MaskOf(w == 0)) | (a2[j] & MaskOf(w == 1)) |
                                   (a3[j] & MaskOf(w == 2)) | (a4[j] & MaskOf(w == 3)));
        const U o = cur[j];
        const U back = background[j];
        const U base = static_cast<U>((o & keepMask) | (back & ~keepMask));
        const U darkened = static_cast<U>(static_cast<U>(base * static_cast<U>(255 - k) + 127) >> 8);
        const U line = static_cast<U>(255 - std::min<U>(a, 255));
        const U e = static_cast<U>((darkened & darkenMask) | (line & ~darkenMask));
        const U edgeOut = divideBy100(static_cast<U>(o * t + 50 + e * rest));
        // Blended, the background gives its blue to every channel.
        const U blend = divideBy100(static_cast<U>(blendBase + o * t));
        const U blended = static_cast<U>((back & exactMask) | (blend & ~exactMask));
        const U plain = static_cast<U>((o & keepMask) | (blended & ~keepMask));
        out[j] = static_cast<std::uint8_t>((edgeOut & edgeMask) | (plain & ~edgeMask));
    }
}

} // namespace

int CImageFilter::FindEdge(int keepOriginal, int colorMode, int transparency, ColorWord background) {
    SetColorA(background);
    m_percent = static_cast<std::int16_t>(transparency);
    if (!Ready()) {
        return 1;
    }
    const int pixelBytes = 3 * m_width;
    const int t = m_percent;
    const int backgroundBgr[3] = {m_colorA[2], m_colorA[1], m_colorA[0]};
    const std::size_t plane = static_cast<std::size_t>(pixelBytes) + 8;
    const std::uint32_t rowBytes = m_rowBytes;
    const EdgeColouring how{t, keepOriginal != 0, colorMode != 0, (100 - t) * backgroundBgr[0] + 50};
    // For each byte of a row: its channel, and the background colour's byte.
    platform::HeapBlock patterns =
        platform::HeapBlock::Allocate(2 * static_cast<std::size_t>(pixelBytes) * sizeof(std::uint16_t));
    if (!patterns) {
        return 0;
    }
    auto* phase = reinterpret_cast<std::uint16_t*>(patterns.data());
    std::uint16_t* backgroundBytes = phase + pixelBytes;
    for (int j = 0; j < pixelBytes; ++j) {
        phase[j] = static_cast<std::uint16_t>(j % 3);
        backgroundBytes[j] = static_cast<std::uint16_t>(backgroundBgr[j % 3]);
    }
    return ops::ThreeRowPass(
        m_src->Bits(), m_dst->MutableBits(), m_height, rowBytes, 7 * plane * sizeof(std::uint16_t),
        [&](const std::uint8_t* prev, const std::uint8_t* cur, const std::uint8_t* next, std::uint8_t* out,
            std::uint8_t* work) {
            auto* planes = reinterpret_cast<std::uint16_t*>(work);
            std::uint16_t* a[4] = {planes, planes + plane, planes + 2 * plane, planes + 3 * plane};
            // Two entries of margin before each: bytes read their pixel's
            // values up to two places back.
            std::uint16_t* winner = planes + 4 * plane + 2;
            std::uint16_t* edge = planes + 5 * plane + 2;
            std::uint16_t* darkening = planes + 6 * plane + 2;
            FormEdgeSums(prev, cur, next, pixelBytes, a[0], a[1], a[2], a[3]);
            PickEdgeDirection(a[0], a[1], a[2], a[3], winner, edge, darkening, pixelBytes);
            ColourEdgeBytes(cur, a[0], a[1], a[2], a[3], winner, edge, darkening, phase, backgroundBytes, out,
                            pixelBytes, how);
        });
}
