// Trace Contour on thresholded rows: a pixel is an edge when a neighbour is
// lighter (or, for the darkest-edge rule, darker) in some channel after each
// byte has been cut at 127.
#include "image/CDibImage.h"
#include "ops/CImageFilter.h"
#include "ops/FilterMath.h"
#include "ops/RowPasses.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int kContourThreshold = 127;

// Thresholded pixels as three bits (blue 1, green 2, red 4): a set bit is a
// byte of 127 or more, which thresholds to 255; a clear bit thresholds to 0.
TAMRICK_VECTOR_CLONES void ThresholdCodes(const std::uint8_t* __restrict row, std::uint8_t* __restrict codes,
                                          int width) {
    for (int x = 0; x < width; ++x) {
        codes[x] = static_cast<std::uint8_t>((row[3 * x] >= kContourThreshold ? 1 : 0) |
                                             (row[3 * x + 1] >= kContourThreshold ? 2 : 0) |
                                             (row[3 * x + 2] >= kContourThreshold ? 4 : 0));
    }
}

constexpr int kBitCount[8] = {0, 1, 1, 2, 1, 2, 2, 3};

// The channels whose difference wins: of the seven neighbours examined in
// order (previous left, current left, next left, previous centre, next
// centre, previous right, current right; never next right) the first whose
// number of differing channels is greatest. Zero when no channel differs.
inline int WinningChannels(const std::uint8_t* prev, const std::uint8_t* cur, const std::uint8_t* next,
                           int left, int x, int right, bool darkest) {
    const int centre = cur[x];
    const int neighbours[7] = {prev[left], cur[left], next[left], prev[x], next[x], prev[right], cur[right]};
    // Key = count x 8 + (7 - order): the largest key is the first neighbour
    // with the most differing channels.
    int bestKey = 0;
    int differing[7];
    for (int k = 0; k < 7; ++k) {
        differing[k] = darkest ? centre & ~neighbours[k] : neighbours[k] & ~centre;
        bestKey = std::max(bestKey, kBitCount[differing[k]] * 8 + (7 - k));
    }
    return bestKey >= 8 ? differing[7 - (bestKey & 7)] : 0;
}

} // namespace

int CImageFilter::TraceContour(int darkestEdge, int keepOriginal, int colorMode, int transparency,
                               ColorWord background, ColorWord foreground) {
    SetColorA(background);
    SetColorB(foreground);
    m_percent = static_cast<std::int16_t>(transparency);
    m_rowOp = darkestEdge ? 1 : 0;
    if (!Ready()) {
        return 1;
    }
    const int t = m_percent;
    const bool darkest = m_rowOp == 1;
    const int backBgr[3] = {m_colorA[2], m_colorA[1], m_colorA[0]};
    const int foreBgr[3] = {m_colorB[2], m_colorB[1], m_colorB[0]};
    // Every output byte is one of three functions of the source byte o: not an
    // edge, an edge whose channel difference d is 0, or one where d is 255.
    // The darkest-edge rule does not use the transparency.
    static constexpr int kNotEdge = 0;
    static constexpr int kEdgeSame = 1;
    static constexpr int kEdgeDiffers = 2;
    std::uint8_t outputs[3][3][256];
    for (int ch = 0; ch < 3; ++ch) {
        for (int o = 0; o < 256; ++o) {
            for (int d : {0, 255}) {
                int edge;
                if (darkest) {
                    edge = colorMode ? foreBgr[ch] : 255 - d;
                } else {
                    edge = colorMode ? (o * t + foreBgr[ch] * (100 - t) + 50) / 100
                                     : ((100 - t) * (255 - d) + o * t + 50) / 100;
                }
                outputs[d == 0 ? kEdgeSame : kEdgeDiffers][ch][o] = static_cast<std::uint8_t>(edge);
            }
            int plain = o;
            if (!keepOriginal) {
                plain = (!darkest && t > 0) ? (o * t + backBgr[ch] * (100 - t) + 50) / 100 : backBgr[ch];
            }
            outputs[kNotEdge][ch][o] = static_cast<std::uint8_t>(plain);
        }
    }
    const int width = m_width;
    const std::uint32_t rowBytes = m_rowBytes;
    return ops::ThreeRowPass(
        m_src->Bits(), m_dst->MutableBits(), m_height, rowBytes, 3 * static_cast<std::size_t>(width),
        [&](const std::uint8_t* prev, const std::uint8_t* cur, const std::uint8_t* next, std::uint8_t* out,
            std::uint8_t* work) {
            std::uint8_t* codes[3] = {work, work + width, work + 2 * width};
            ThresholdCodes(prev, codes[0], width);
            ThresholdCodes(cur, codes[1], width);
            ThresholdCodes(next, codes[2], width);
            std::memcpy(out, cur, rowBytes);
            for (int x = 0; x < width; ++x) {
                const int left = x > 0 ? x - 1 : x;
                const int right = x + 1 < width ? x + 1 : x;
                const int winning = WinningChannels(codes[0], codes[1], codes[2], left, x, right, darkest);
                for (int ch = 0; ch < 3; ++ch) {
                    const int kind = winning == 0            ? kNotEdge
                                     : ((winning >> ch) & 1) ? kEdgeDiffers
                                                             : kEdgeSame;
                    out[3 * x + ch] = outputs[kind][ch][cur[3 * x + ch]];
                }
            }
        });
}
