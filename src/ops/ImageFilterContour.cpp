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
// codes[-1] and codes[width] repeat the end pixels.
TAMRICK_VECTOR_CLONES void ThresholdCodes(const std::uint8_t* __restrict row, std::uint8_t* __restrict codes,
                                          int width) {
    for (int x = 0; x < width; ++x) {
        codes[x] = static_cast<std::uint8_t>((row[3 * x] >= kContourThreshold ? 1 : 0) |
                                             (row[3 * x + 1] >= kContourThreshold ? 2 : 0) |
                                             (row[3 * x + 2] >= kContourThreshold ? 4 : 0));
    }
    codes[-1] = codes[0];
    codes[width] = codes[width - 1];
}

inline std::uint8_t BitCount3(std::uint8_t bits) {
    return static_cast<std::uint8_t>((bits & 1) + ((bits >> 1) & 1) + ((bits >> 2) & 1));
}

// Per pixel, the channels whose difference wins: of the seven neighbours
// examined in order (previous left, current left, next left, previous centre,
// next centre, previous right, current right; never next right) the first
// whose number of differing channels is greatest; zero when none differs.
TAMRICK_VECTOR_CLONES void WinningChannels(const std::uint8_t* __restrict prev,
                                           const std::uint8_t* __restrict cur,
                                           const std::uint8_t* __restrict next,
                                           std::uint8_t* __restrict winning, int width, bool darkest) {
    const std::uint8_t flip = darkest ? 7 : 0;
    for (int x = 0; x < width; ++x) {
        const std::uint8_t centre = cur[x];
        const std::uint8_t neighbours[7] = {prev[x - 1], cur[x - 1],  next[x - 1], prev[x],
                                            next[x],     prev[x + 1], cur[x + 1]};
        std::uint8_t best = 0;
        std::uint8_t bestCount = 0;
        for (int k = 0; k < 7; ++k) {
            // Lightest: the neighbour is set where the centre is clear; darkest:
            // the other way round.
            const std::uint8_t n = static_cast<std::uint8_t>(neighbours[k] ^ flip);
            const std::uint8_t c = static_cast<std::uint8_t>(centre ^ flip);
            const auto differing = static_cast<std::uint8_t>(n & ~c & 7);
            const std::uint8_t count = BitCount3(differing);
            best = count > bestCount ? differing : best;
            bestCount = count > bestCount ? count : bestCount;
        }
        winning[x] = best;
    }
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
    // The table each channel's byte goes through, per set of winning channels.
    const std::uint8_t* channelTable[8][3];
    for (int winning = 0; winning < 8; ++winning) {
        for (int ch = 0; ch < 3; ++ch) {
            const int kind = winning == 0 ? kNotEdge : ((winning >> ch) & 1) ? kEdgeDiffers : kEdgeSame;
            channelTable[winning][ch] = outputs[kind][ch];
        }
    }
    const int width = m_width;
    const std::uint32_t rowBytes = m_rowBytes;
    const std::size_t codeRow = static_cast<std::size_t>(width) + 2;
    return ops::ThreeRowPass(
        m_src->Bits(), m_dst->MutableBits(), m_height, rowBytes, 4 * codeRow,
        [&](const std::uint8_t* prev, const std::uint8_t* cur, const std::uint8_t* next, std::uint8_t* out,
            std::uint8_t* work) {
            std::uint8_t* codes[3] = {work + 1, work + codeRow + 1, work + 2 * codeRow + 1};
            std::uint8_t* winning = work + 3 * codeRow;
            ThresholdCodes(prev, codes[0], width);
            ThresholdCodes(cur, codes[1], width);
            ThresholdCodes(next, codes[2], width);
            WinningChannels(codes[0], codes[1], codes[2], winning, width, darkest);
            std::memcpy(out, cur, rowBytes);
            for (int x = 0; x < width; ++x) {
                const std::uint8_t* const* tables = channelTable[winning[x]];
                out[3 * x] = tables[0][cur[3 * x]];
                out[3 * x + 1] = tables[1][cur[3 * x + 1]];
                out[3 * x + 2] = tables[2][cur[3 * x + 2]];
            }
        });
}
