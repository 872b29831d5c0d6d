// Hue/Saturation: the per-pixel integer hue-saturation-value round trip.
//
// The rows are converted in planar form (one array per channel) by a loop
// without branches that the compiler vectorises. Its integer quotients are
// taken as truncated single-precision quotients, which are exact here: for
// integers x and y with |x| + y below 2^24 the rounded quotient never reaches
// the next integer. Every numerator below is at most 255 x 255 in magnitude.
#include "image/CDibImage.h"
#include "ops/CColorAdjuster.h"
#include "ops/FilterMath.h"
#include "ops/RowPasses.h"

#include <algorithm>

namespace {

// Truncated quotient of two small integers (C division).
inline int Quotient(int x, int y) {
    return static_cast<int>(static_cast<float>(x) / static_cast<float>(y));
}

// Quotients by constants as multiplications, exact over the ranges used
// (checked below): x / 255 for 0 <= x <= 255 x 255, x / 60 for 0 <= x < 480,
// and x / 100 truncated toward zero for |x| <= 25550.
constexpr int DivideBy255(int x) {
    return (x * 32897) >> 23;
}
constexpr int DivideBy60(int x) {
    return (x * 1093) >> 16;
}
constexpr int DivideBy100Signed(int x) {
    const int sign = x >> 31; // 0 or -1
    return (ops::DivideBy100((x ^ sign) - sign) ^ sign) - sign;
}
constexpr bool ConstantQuotientsAreExact() {
    for (int x = 0; x <= 255 * 255; ++x) {
        if (DivideBy255(x) != x / 255 || (x < 480 && DivideBy60(x) != x / 60) ||
            (x <= 25550 && (DivideBy100Signed(x) != x / 100 || DivideBy100Signed(-x) != -x / 100))) {
            return false;
        }
    }
    return true;
}
static_assert(ConstantQuotientsAreExact());

TAMRICK_VECTOR_CLONES void SplitChannels(const std::uint8_t* __restrict row, int* __restrict blue,
                                         int* __restrict green, int* __restrict red, int width) {
    for (int x = 0; x < width; ++x) {
        blue[x] = row[3 * x];
        green[x] = row[3 * x + 1];
        red[x] = row[3 * x + 2];
    }
}

TAMRICK_VECTOR_CLONES void JoinChannels(const int* __restrict blue, const int* __restrict green,
                                        const int* __restrict red, std::uint8_t* __restrict row, int width) {
    for (int x = 0; x < width; ++x) {
        row[3 * x] = static_cast<std::uint8_t>(blue[x]);
        row[3 * x + 1] = static_cast<std::uint8_t>(green[x]);
        row[3 * x + 2] = static_cast<std::uint8_t>(red[x]);
    }
}

// Converts the pixels in place. Grey pixels, and pixels whose shifted hue
// leaves 0..359 (only with a shift beyond -180..180), stay as they are.
TAMRICK_VECTOR_CLONES void ShiftHueSaturation(int* __restrict blue, int* __restrict green,
                                              int* __restrict red, int width, int hueShift, int saturation) {
    for (int x = 0; x < width; ++x) {
        const int b = blue[x];
        const int g = green[x];
        const int r = red[x];
        const int v = std::max(std::max(r, g), b);
        const int m = std::min(std::min(r, g), b);
        const bool grey = m == v;
        // Grey pixels are kept; they only need divisors that are not zero.
        const int delta = v - m + static_cast<int>(grey);
        const int top = v + static_cast<int>(v == 0);
        const int s = Quotient(delta * 255, top);
        const int sat = std::min(std::max(s + DivideBy100Signed(saturation * s + 50), 0), 255);
        // Red is tested first, then green.
        const bool redTop = r == v;
        const bool greenTop = !redTop & (g == v);
        const int numerator = redTop ? g - b : (greenTop ? b - r : r - g);
        const int offset = redTop ? 0 : (greenTop ? 120 : 240);
        int h = Quotient(numerator * 60 + (delta >> 1), delta) + offset + hueShift;
        h += h < 0 ? 360 : (h >= 360 ? -360 : 0);
        const bool keep = grey | (h < 0) | (h >= 360);
        const int sector = DivideBy60(h);
        const float f = static_cast<float>(h) * 0.016666668f - static_cast<float>(sector);
        // f in odd sectors, 1 - f in even ones; multiplying by 0 or 1 and
        // adding 0 are exact, so this is the plain choice without a branch.
        const auto odd = static_cast<float>(sector & 1);
        const float share = f * odd + (1.0f - f) * (1.0f - odd);
        const int falling = static_cast<int>(static_cast<float>(sat) * share);
        const int p = DivideBy255((255 - sat) * v);
        const int t = DivideBy255((255 - falling) * v);
        // Sectors 0..5 give blue p p t V V t, green t V V t p p, red V t p p t V.
        const int nb = sector <= 1 ? p : (((sector == 2) | (sector == 5)) ? t : v);
        const int ng = ((sector == 0) | (sector == 3)) ? t : (sector <= 2 ? v : p);
        const int nr = ((sector == 0) | (sector == 5)) ? v : (((sector == 1) | (sector == 4)) ? t : p);
        blue[x] = keep ? b : nb;
        green[x] = keep ? g : ng;
        red[x] = keep ? r : nr;
    }
}

} // namespace

int CColorAdjuster::ApplyHueSaturation(int hueShift, int saturation) {
    m_hueShift = static_cast<std::int16_t>(hueShift);
    m_saturation = static_cast<std::int16_t>(saturation);
    if (!Ready()) {
        return 1;
    }
    const std::uint8_t* src = m_src->Bits();
    std::uint8_t* dst = m_dst->MutableBits();
    const std::uint32_t rowBytes = m_rowBytes;
    const int width = m_width;
    const std::size_t plane = static_cast<std::size_t>(width);
    return ops::ForEachStoredRow(m_height, 3 * plane * sizeof(int), [=](int y, std::uint8_t* work) {
        int* blue = reinterpret_cast<int*>(work);
        int* green = blue + plane;
        int* red = green + plane;
        SplitChannels(src + static_cast<std::size_t>(y) * rowBytes, blue, green, red, width);
        ShiftHueSaturation(blue, green, red, width, hueShift, saturation);
        JoinChannels(blue, green, red, dst + static_cast<std::size_t>(y) * rowBytes, width);
    });
}
