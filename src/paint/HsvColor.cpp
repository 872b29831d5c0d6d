#include "paint/HsvColor.h"

#include <algorithm>

HsvColor HsvFromColor(ColorWord color) {
    const int r = RedOf(color);
    const int g = GreenOf(color);
    const int b = BlueOf(color);
    const int high = std::max({r, g, b});
    const int delta = high - std::min({r, g, b});
    HsvColor hsv;
    hsv.value = high;
    if (delta < 1) {
        return hsv;
    }
    hsv.saturation = delta * 255 / high;
    if (high == r) {
        hsv.hue = ((g - b) * 60 + delta / 2) / delta;
    } else if (high == g) {
        hsv.hue = ((b - r) * 60 + delta / 2) / delta + 120;
    } else {
        hsv.hue = ((r - g) * 60 + delta / 2) / delta + 240;
    }
    return hsv;
}

ColorWord ColorFromHsv(int hue, int saturation, int value) {
    if (hue < 0) {
        hue += 360;
    } else if (hue >= 360) {
        hue -= 360;
    }
    const int sector = hue / 60;
    const float fraction = static_cast<float>(hue) * 0.016666668f - static_cast<float>(sector);
    const int s = saturation;
    const int v = value;
    const int p = v * (255 - s) / 255;
    const int q = v * (255 - static_cast<int>(static_cast<float>(s) * fraction)) / 255;
    const int t = v * (255 - static_cast<int>(static_cast<float>(s) * (1.0f - fraction))) / 255;
    switch (sector) {
    case 0:
        return MakeColorWord(v, t, p);
    case 1:
        return MakeColorWord(q, v, p);
    case 2:
        return MakeColorWord(p, v, t);
    case 3:
        return MakeColorWord(p, q, v);
    case 4:
        return MakeColorWord(t, p, v);
    default:
        return MakeColorWord(v, p, q);
    }
}
