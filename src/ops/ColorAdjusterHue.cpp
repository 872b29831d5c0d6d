// Hue/Saturation: the per-pixel integer hue-saturation-value round trip.
#include "image/CDibImage.h"
#include "ops/CColorAdjuster.h"
#include "ops/RowPasses.h"

#include <algorithm>
#include <cstring>

namespace {

// Exact quotients by 1..255 through multiplication: x / d = (x x R[d]) >> 32
// with R[d] = ceil(2^32 / d), for every x up to 255 x 255.
struct Reciprocals {
    std::uint64_t of[256];
    Reciprocals() {
        of[0] = 0;
        for (int d = 1; d < 256; ++d) {
            of[d] = ((std::uint64_t{1} << 32) + static_cast<std::uint64_t>(d) - 1) /
                    static_cast<std::uint64_t>(d);
        }
    }
    int Divide(int x, int d) const { return static_cast<int>((static_cast<std::uint64_t>(x) * of[d]) >> 32); }
    // Truncates toward zero like C division.
    int DivideSigned(int x, int d) const {
        const int sign = x >> 31; // 0 or -1
        return (Divide((x ^ sign) - sign, d) ^ sign) - sign;
    }
};

const Reciprocals& Quotients() {
    static const Reciprocals reciprocals;
    return reciprocals;
}

// Converts one pixel (blue, green, red); grey pixels come out unchanged, as
// do pixels whose hue falls outside 0..359 (a shift beyond -180..180). `newSaturation[s]` is clamp(s +
// (saturation x s + 50) / 100).
inline void ShiftHueSaturation(const std::uint8_t* in, std::uint8_t* out, int hueShift,
                               const std::uint8_t* newSaturation, const Reciprocals& q) {
    const int b = in[0];
    const int g = in[1];
    const int r = in[2];
    const int v = std::max({r, g, b});
    const int m = std::min({r, g, b});
    std::memcpy(out, in, 3);
    if (m == v) {
        return;
    }
    const int delta = v - m;
    const int sat = newSaturation[q.Divide(delta * 255, v)];
    const int half = delta >> 1;
    // Red is tested first, then green: numerator and offset of the hue.
    const bool redTop = r == v;
    const bool greenTop = !redTop && g == v;
    const int numerator = redTop ? g - b : greenTop ? b - r : r - g;
    const int offset = redTop ? 0 : greenTop ? 120 : 240;
    int h = q.DivideSigned(numerator * 60 + half, delta) + offset + hueShift;
    h += h < 0 ? 360 : (h >= 360 ? -360 : 0);
    const int sector = h / 60;
    if (static_cast<unsigned>(sector) > 5) {
        return; // only with a hue shift beyond half a turn
    }
    const float f = static_cast<float>(h) * 0.016666668f - static_cast<float>(sector);
    const int p = q.Divide((255 - sat) * v, 255);
    const float share = (sector & 1) ? f : 1.0f - f;
    const int falling = static_cast<int>(static_cast<float>(sat) * share);
    const int t = q.Divide((255 - falling) * v, 255);
    // Which of p, t and V each channel (blue, green, red) takes per sector.
    static constexpr std::uint8_t kTakes[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 2, 0},
                                                  {2, 1, 0}, {2, 0, 1}, {1, 0, 2}};
    const int values[3] = {p, t, v};
    const std::uint8_t* takes = kTakes[sector];
    out[0] = static_cast<std::uint8_t>(values[takes[0]]);
    out[1] = static_cast<std::uint8_t>(values[takes[1]]);
    out[2] = static_cast<std::uint8_t>(values[takes[2]]);
}

} // namespace

int CColorAdjuster::ApplyHueSaturation(int hueShift, int saturation) {
    m_hueShift = static_cast<std::int16_t>(hueShift);
    m_saturation = static_cast<std::int16_t>(saturation);
    if (!Ready()) {
        return 1;
    }
    std::uint8_t newSaturation[256];
    for (int v = 0; v < 256; ++v) {
        newSaturation[v] = static_cast<std::uint8_t>(std::clamp(v + (saturation * v + 50) / 100, 0, 255));
    }
    const Reciprocals& quotients = Quotients();
    const std::uint8_t* src = m_src->Bits();
    std::uint8_t* dst = m_dst->MutableBits();
    const std::uint32_t rowBytes = m_rowBytes;
    const int width = m_width;
    return ops::ForEachStoredRow(m_height, 0, [&, rowBytes, width, hueShift](int y, std::uint8_t*) {
        const std::uint8_t* in = src + static_cast<std::size_t>(y) * rowBytes;
        std::uint8_t* out = dst + static_cast<std::size_t>(y) * rowBytes;
        for (int x = 0; x < width; ++x, in += 3, out += 3) {
            ShiftHueSaturation(in, out, hueShift, newSaturation, quotients);
        }
    });
}
