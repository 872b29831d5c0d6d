// Find Edge and Trace Contour: the edge filters with their colour, background
// and transparency options.
#include "image/CDibImage.h"
#include "ops/CImageFilter.h"
#include "ops/FilterMath.h"
#include "ops/RowPasses.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr int kContourThreshold = 127;

// Absolute directional sums of Find Edge for one byte, given its left and
// right neighbours' byte positions (the same byte at the row's ends).
struct EdgeSums {
    std::uint16_t* d[4];

    void At(const std::uint8_t* p, const std::uint8_t* c, const std::uint8_t* n, int j, int l, int r) const {
        const int d1 = (p[l] + p[j] + p[r]) - (n[l] + n[j] + n[r]);
        const int a1 = std::abs(d1);
        const int d2 = c[l] + n[l] + a1 - c[r] - p[r];
        const int d3 = (p[l] + c[l] + n[l]) - (p[r] + c[r] + n[r]);
        const int d4 = (p[j] + p[r] + c[r]) - (c[l] + n[l] + n[j]);
        d[0][j] = static_cast<std::uint16_t>(a1);
        d[1][j] = static_cast<std::uint16_t>(std::abs(d2));
        d[2][j] = static_cast<std::uint16_t>(std::abs(d3));
        d[3][j] = static_cast<std::uint16_t>(std::abs(d4));
    }
};

void FormEdgeSums(const std::uint8_t* p, const std::uint8_t* c, const std::uint8_t* n, int pixelBytes,
                  const EdgeSums& sums) {
    const int last = pixelBytes - 3;
    const auto atEdge = [&](int j) { sums.At(p, c, n, j, j >= 3 ? j - 3 : j, j < last ? j + 3 : j); };
    for (int j = 0; j < std::min(3, pixelBytes); ++j) {
        atEdge(j);
    }
    for (int j = std::max(last, 3); j < pixelBytes; ++j) {
        atEdge(j);
    }
    for (int j = 3; j < last; ++j) {
        sums.At(p, c, n, j, j - 3, j + 3);
    }
}

void Threshold(const std::uint8_t* row, std::uint8_t* out, std::uint32_t rowBytes) {
    for (std::uint32_t i = 0; i < rowBytes; ++i) {
        out[i] = row[i] < kContourThreshold ? 0 : 255;
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
    return ops::ThreeRowPass(
        m_src->Bits(), m_dst->MutableBits(), m_height, rowBytes, 4 * plane * sizeof(std::uint16_t),
        [&](const std::uint8_t* prev, const std::uint8_t* cur, const std::uint8_t* next, std::uint8_t* out,
            std::uint8_t* work) {
            auto* planes = reinterpret_cast<std::uint16_t*>(work);
            const EdgeSums sums{{planes, planes + plane, planes + 2 * plane, planes + 3 * plane}};
            FormEdgeSums(prev, cur, next, pixelBytes, sums);
            for (int j = 0; j < pixelBytes; j += 3) {
                const std::uint16_t* best = sums.d[0] + j;
                int bestStrength = best[0] + best[1] + best[2];
                for (int k = 1; k < 4; ++k) {
                    const std::uint16_t* a = sums.d[k] + j;
                    const int strength = a[0] + a[1] + a[2];
                    if (strength > bestStrength) {
                        bestStrength = strength;
                        best = a;
                    }
                }
                const bool edge = best[0] > 32 || best[1] > 32 || best[2] > 32;
                for (int ch = 0; ch < 3; ++ch) {
                    const int cc = cur[j + ch];
                    int value;
                    if (edge) {
                        int e;
                        if (colorMode == 0) {
                            e = 255 - std::min<int>(best[ch], 255);
                        } else {
                            const int k = std::min((bestStrength + 1) / 3, 255);
                            const int base = keepOriginal ? cc : backgroundBgr[ch];
                            e = (base * (255 - k) + 127) >> 8;
                        }
                        value = (cc * t + e * (100 - t) + 50) / 100;
                    } else if (keepOriginal) {
                        value = cc;
                    } else if (t < 1) {
                        value = backgroundBgr[ch];
                    } else {
                        // The blend uses the background's blue for every channel.
                        value = ((100 - t) * backgroundBgr[0] + cc * t + 50) / 100;
                    }
                    out[j + ch] = static_cast<std::uint8_t>(value);
                }
            }
        });
}

int CImageFilter::TraceContour(int darkestEdge, int keepOriginal, int colorMode, int transparency,
                               ColorWord background, ColorWord foreground) {
    SetColorA(background);
    SetColorB(foreground);
    m_percent = static_cast<std::int16_t>(transparency);
    m_rowOp = darkestEdge ? 1 : 0;
    if (!Ready()) {
        return 1;
    }
    const int lastPixel = 3 * (m_width - 1);
    const int t = m_percent;
    const bool darkest = m_rowOp == 1;
    const int backBgr[3] = {m_colorA[2], m_colorA[1], m_colorA[0]};
    const int foreBgr[3] = {m_colorB[2], m_colorB[1], m_colorB[0]};
    // Neighbours in the order they are examined: row (0 previous, 1 current,
    // 2 next) and column step. The next row's right pixel is never looked at.
    static constexpr int kOrder[7][2] = {{0, -1}, {1, -1}, {2, -1}, {0, 0}, {2, 0}, {0, 1}, {1, 1}};
    const std::uint32_t rowBytes = m_rowBytes;
    return ops::ThreeRowPass(
        m_src->Bits(), m_dst->MutableBits(), m_height, rowBytes, 4 * static_cast<std::size_t>(rowBytes),
        [&](const std::uint8_t* prev, const std::uint8_t* cur, const std::uint8_t* next, std::uint8_t* out,
            std::uint8_t* work) {
            const std::uint8_t* rows[3] = {work, work + rowBytes, work + 2 * rowBytes};
            Threshold(prev, work, rowBytes);
            Threshold(cur, work + rowBytes, rowBytes);
            Threshold(next, work + 2 * rowBytes, rowBytes);
            std::memcpy(out, cur, rowBytes);
            for (int x = 0; x <= lastPixel; x += 3) {
                const std::uint8_t* centre = rows[1] + x;
                int bestSum = 0;
                int d[3] = {0, 0, 0};
                for (const auto& [row, step] : kOrder) {
                    const std::uint8_t* nb = rows[row] + std::clamp(x + 3 * step, 0, lastPixel);
                    int diff[3];
                    for (int ch = 0; ch < 3; ++ch) {
                        diff[ch] = std::max(darkest ? centre[ch] - nb[ch] : nb[ch] - centre[ch], 0);
                    }
                    const int sum = diff[0] + diff[1] + diff[2];
                    if (sum > bestSum) {
                        bestSum = sum;
                        d[0] = diff[0];
                        d[1] = diff[1];
                        d[2] = diff[2];
                    }
                }
                const bool edge = bestSum >= 1;
                for (int ch = 0; ch < 3; ++ch) {
                    const int o = cur[x + ch];
                    int value;
                    if (darkest) {
                        value =
                            edge ? (colorMode ? foreBgr[ch] : 255 - d[ch]) : (keepOriginal ? o : backBgr[ch]);
                    } else if (edge) {
                        value = colorMode ? (o * t + foreBgr[ch] * (100 - t) + 50) / 100
                                          : ((100 - t) * (255 - d[ch]) + o * t + 50) / 100;
                    } else if (keepOriginal) {
                        value = o;
                    } else {
                        value = t > 0 ? (o * t + backBgr[ch] * (100 - t) + 50) / 100 : backBgr[ch];
                    }
                    out[x + ch] = static_cast<std::uint8_t>(value);
                }
            }
        });
}
