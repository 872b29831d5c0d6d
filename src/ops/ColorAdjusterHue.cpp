// Hue/Saturation: the per-pixel integer hue-saturation-value round trip.
#include "image/CDibImage.h"
#include "ops/CColorAdjuster.h"
#include "ops/RowPasses.h"

#include <algorithm>
#include <cstring>

namespace {

// Converts one pixel (blue, green, red) with the hue shift and saturation
// change; grey pixels and impossible sectors come out unchanged.
inline void ShiftHueSaturation(const std::uint8_t* in, std::uint8_t* out, int hueShift, int saturation) {
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
    const int s = delta * 255 / v;
    const int sat = std::clamp(s + (saturation * s + 50) / 100, 0, 255);
    const int half = delta >> 1;
    int h;
    if (r == v) {
        h = ((g - b) * 60 + half) / delta;
    } else if (g == v) {
        h = ((b - r) * 60 + half) / delta + 120;
    } else {
        h = ((r - g) * 60 + half) / delta + 240;
    }
    h += hueShift;
    if (h < 0) {
        h += 360;
    } else if (h >= 360) {
        h -= 360;
    }
    const int sector = h / 60;
    const float f = static_cast<float>(h) * 0.016666668f - static_cast<float>(sector);
    const int p = (255 - sat) * v / 255;
    const float share = (sector & 1) ? f : 1.0f - f;
    const int q = static_cast<int>(static_cast<float>(sat) * share);
    const int t = (255 - q) * v / 255;
    int nb, ng, nr;
    switch (sector) {
    case 0:
        nb = p, ng = t, nr = v;
        break;
    case 1:
        nb = p, ng = v, nr = t;
        break;
    case 2:
        nb = t, ng = v, nr = p;
        break;
    case 3:
        nb = v, ng = t, nr = p;
        break;
    case 4:
        nb = v, ng = p, nr = t;
        break;
    case 5:
        nb = t, ng = p, nr = v;
        break;
    default:
        return;
    }
    out[0] = static_cast<std::uint8_t>(nb);
    out[1] = static_cast<std::uint8_t>(ng);
    out[2] = static_cast<std::uint8_t>(nr);
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
    return ops::ForEachStoredRow(m_height, 0, [&](int y, std::uint8_t*) {
        const std::uint8_t* in = src + static_cast<std::size_t>(y) * m_rowBytes;
        std::uint8_t* out = dst + static_cast<std::size_t>(y) * m_rowBytes;
        for (int x = 0; x < m_width; ++x, in += 3, out += 3) {
            ShiftHueSaturation(in, out, m_hueShift, m_saturation);
        }
    });
}
