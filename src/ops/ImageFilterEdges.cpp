// Find Edge: four directional sums per pixel, the strongest direction deciding
// whether the pixel is an edge and how dark it becomes.
#include "image/CDibImage.h"
#include "ops/CImageFilter.h"
#include "ops/FilterMath.h"
#include "ops/RowPasses.h"

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

// At every j (pixel starts j = 3x are used): which direction has the greatest
// three-channel strength, an earlier one keeping its place on a tie, and that
// strength.
TAMRICK_VECTOR_CLONES void
PickEdgeDirection(const std::uint16_t* __restrict a1, const std::uint16_t* __restrict a2,
                  const std::uint16_t* __restrict a3, const std::uint16_t* __restrict a4,
                  std::uint16_t* __restrict winner, std::uint16_t* __restrict strength, int pixelBytes) {
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
        winner[j] = best;
        strength[j] = top;
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
    // Per-channel parts of the blends, tabled: the weighted centre (with the
    // rounding half) and the weighted edge colour.
    int centreShare[256];
    int edgeShare[256];
    for (int v = 0; v < 256; ++v) {
        centreShare[v] = v * t + 50;
        edgeShare[v] = v * (100 - t);
    }
    return ops::ThreeRowPass(
        m_src->Bits(), m_dst->MutableBits(), m_height, rowBytes, 6 * plane * sizeof(std::uint16_t),
        [&](const std::uint8_t* prev, const std::uint8_t* cur, const std::uint8_t* next, std::uint8_t* out,
            std::uint8_t* work) {
            auto* planes = reinterpret_cast<std::uint16_t*>(work);
            std::uint16_t* a[4] = {planes, planes + plane, planes + 2 * plane, planes + 3 * plane};
            std::uint16_t* winner = planes + 4 * plane;
            std::uint16_t* strength = planes + 5 * plane;
            FormEdgeSums(prev, cur, next, pixelBytes, a[0], a[1], a[2], a[3]);
            PickEdgeDirection(a[0], a[1], a[2], a[3], winner, strength, pixelBytes);
            for (int j = 0; j < pixelBytes; j += 3) {
                const std::uint16_t* best = a[winner[j]] + j;
                const bool edge = best[0] > 32 || best[1] > 32 || best[2] > 32;
                const std::uint8_t* centre = cur + j;
                if (!edge) {
                    if (keepOriginal) {
                        std::memcpy(out + j, centre, 3);
                    } else if (t < 1) {
                        for (int ch = 0; ch < 3; ++ch) {
                            out[j + ch] = static_cast<std::uint8_t>(backgroundBgr[ch]);
                        }
                    } else {
                        // The blend uses the background's blue for every channel.
                        for (int ch = 0; ch < 3; ++ch) {
                            out[j + ch] = static_cast<std::uint8_t>(
                                ops::DivideBy100(edgeShare[backgroundBgr[0]] + centreShare[centre[ch]]));
                        }
                    }
                    continue;
                }
                const int k = std::min((strength[j] + 1) / 3, 255);
                for (int ch = 0; ch < 3; ++ch) {
                    const int base = keepOriginal ? centre[ch] : backgroundBgr[ch];
                    const int e =
                        colorMode == 0 ? 255 - std::min<int>(best[ch], 255) : (base * (255 - k) + 127) >> 8;
                    out[j + ch] =
                        static_cast<std::uint8_t>(ops::DivideBy100(centreShare[centre[ch]] + edgeShare[e]));
                }
            }
        });
}
