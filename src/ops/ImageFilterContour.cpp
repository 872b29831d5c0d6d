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

// Every output byte is (o x scale + offset) / 100 of its source byte o, with
// the scale and offset chosen by the pixel's kind (not an edge; an edge where
// the byte's channel does not differ; one where it does) and the channel.
// The sum stays within 25550, where the quotient by 100 is a multiplication.
struct ContourRules {
    std::uint16_t scale[3][3];  // [kind][channel blue, green, red]
    std::uint16_t offset[3][3]; // rounding half included
};
constexpr int kNotEdge = 0;
constexpr int kEdgeSame = 1;
constexpr int kEdgeDiffers = 2;

TAMRICK_VECTOR_CLONES void ColourContourRow(const std::uint8_t* __restrict cur,
                                            const std::uint8_t* __restrict winning,
                                            std::uint8_t* __restrict out, int width, const ContourRules& rules) {
    std::uint16_t scale[3][3];
    std::uint16_t offset[3][3];
    std::memcpy(scale, rules.scale, sizeof scale);
    std::memcpy(offset, rules.offset, sizeof offset);
    for (int x = 0; x < width; ++x) {
        const std::uint8_t w = winning[x];
        for (int ch = 0; ch < 3; ++ch) {
            const bool edge = w != 0;
            const bool differs = ((w >> ch) & 1) != 0;
            const std::uint16_t s = edge ? (differs ? scale[kEdgeDiffers][ch] : scale[kEdgeSame][ch])
                                         : scale[kNotEdge][ch];
            const std::uint16_t k = edge ? (differs ? offset[kEdgeDiffers][ch] : offset[kEdgeSame][ch])
                                         : offset[kNotEdge][ch];
            out[3 * x + ch] = static_cast<std::uint8_t>(
                ops::DivideBy100Narrow(static_cast<std::uint16_t>(cur[3 * x + ch] * s + k)));
        }
    }
}

// The rule of each kind and channel for the chosen options. The darkest-edge
// rule does not use the transparency.
ContourRules MakeContourRules(bool darkest, bool keepOriginal, bool foregroundColour, int t,
                              const int backBgr[3], const int foreBgr[3]) {
    ContourRules rules{};
    const auto set = [&](int kind, int ch, int scale, int value) {
        rules.scale[kind][ch] = static_cast<std::uint16_t>(scale);
        rules.offset[kind][ch] = static_cast<std::uint16_t>(value + 50);
    };
    for (int ch = 0; ch < 3; ++ch) {
        for (int kind : {kEdgeSame, kEdgeDiffers}) {
            const int line = kind == kEdgeSame ? 255 : 0; // 255 - d
            if (darkest) {
                set(kind, ch, 0, 100 * (foregroundColour ? foreBgr[ch] : line));
            } else {
                set(kind, ch, t, (100 - t) * (foregroundColour ? foreBgr[ch] : line));
            }
        }
        if (keepOriginal) {
            set(kNotEdge, ch, 100, 0);
        } else if (!darkest && t > 0) {
            set(kNotEdge, ch, t, (100 - t) * backBgr[ch]);
        } else {
            set(kNotEdge, ch, 0, 100 * backBgr[ch]);
        }
    }
    return rules;
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
    const ContourRules rules = MakeContourRules(darkest, keepOriginal != 0, colorMode != 0, t, backBgr, foreBgr);
    const int width = m_width;
    const std::uint32_t rowBytes = m_rowBytes;
    const std::size_t codeRow = static_cast<std::size_t>(width) + 2;
    const int height = m_height;
    const std::uint8_t* src = m_src->Bits();
    std::uint8_t* dst = m_dst->MutableBits();
    // Each band thresholds every row it needs once, keeping the codes of the
    // previous, current and next row in rotation.
    return ops::ForEachBandWithWork(height, 4 * codeRow, [&](int begin, int end, std::uint8_t* work) {
        const auto row = [&](int y) { return src + static_cast<std::size_t>(y) * rowBytes; };
        std::uint8_t* previous = work + 1;
        std::uint8_t* current = work + codeRow + 1;
        std::uint8_t* next = work + 2 * codeRow + 1;
        std::uint8_t* winning = work + 3 * codeRow;
        ThresholdCodes(row(std::max(begin - 1, 0)), previous, width);
        ThresholdCodes(row(begin), current, width);
        for (int y = begin; y < end; ++y) {
            ThresholdCodes(row(std::min(y + 1, height - 1)), next, width);
            WinningChannels(previous, current, next, winning, width, darkest);
            const std::uint8_t* cur = row(y);
            std::uint8_t* out = dst + static_cast<std::size_t>(y) * rowBytes;
            ColourContourRow(cur, winning, out, width, rules);
            std::memcpy(out + 3 * width, cur + 3 * width, rowBytes - 3 * width); // padding
            std::uint8_t* oldest = previous;
            previous = current;
            current = next;
            next = oldest;
        }
    });
}
