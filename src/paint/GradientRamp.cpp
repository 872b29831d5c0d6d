#include "paint/GradientRamp.h"

#include "paint/HsvColor.h"

void GradientRamp::SetColors(ColorWord start, ColorWord end) {
    m_start = start;
    m_end = end;
}

ColorWord GradientRamp::Entry(int i) const {
    return MakeColorWord(m_table[i][0], m_table[i][1], m_table[i][2]);
}

void GradientRamp::BuildTable() {
    const ColorWord ends[2] = {m_start, m_end};
    for (int e = 0; e < 2; ++e) {
        const int i = e == 0 ? 0 : kLast;
        m_table[i][0] = static_cast<std::uint8_t>(RedOf(ends[e]));
        m_table[i][1] = static_cast<std::uint8_t>(GreenOf(ends[e]));
        m_table[i][2] = static_cast<std::uint8_t>(BlueOf(ends[e]));
    }
    if (m_colorMode == kHueClockwise || m_colorMode == kHueCounterClockwise) {
        InterpolateHue();
    } else {
        InterpolateRgb();
    }
}

// Each channel steps by (end - start) / 1199 per entry, accumulated in double
// precision and rounded half up.
void GradientRamp::InterpolateRgb() {
    const int start[3] = {RedOf(m_start), GreenOf(m_start), BlueOf(m_start)};
    const int end[3] = {RedOf(m_end), GreenOf(m_end), BlueOf(m_end)};
    for (int c = 0; c < 3; ++c) {
        const double step = static_cast<double>(end[c] - start[c]) / kLast;
        double value = start[c];
        for (int i = 1; i < kLast; ++i) {
            value += step;
            m_table[i][c] = static_cast<std::uint8_t>(static_cast<int>(value + 0.5));
        }
    }
}

// Clockwise: the hue falls from start to end (360 is added to a start hue
// below the end hue); counter-clockwise: it rises.
void GradientRamp::InterpolateHue() {
    HsvColor start = HsvFromColor(m_start);
    HsvColor end = HsvFromColor(m_end);
    if (m_colorMode == kHueClockwise && start.hue < end.hue) {
        start.hue += 360;
    } else if (m_colorMode == kHueCounterClockwise && start.hue > end.hue) {
        end.hue += 360;
    }
    const double from[3] = {static_cast<double>(start.hue), static_cast<double>(start.saturation),
                            static_cast<double>(start.value)};
    const double step[3] = {(end.hue - from[0]) / kLast, (end.saturation - from[1]) / kLast,
                            (end.value - from[2]) / kLast};
    double value[3] = {from[0], from[1], from[2]};
    for (int i = 1; i < kLast; ++i) {
        int hsv[3];
        for (int c = 0; c < 3; ++c) {
            value[c] += step[c];
            hsv[c] = static_cast<int>(value[c] + 0.5);
        }
        const ColorWord color = ColorFromHsv(hsv[0], hsv[1], hsv[2]);
        m_table[i][0] = static_cast<std::uint8_t>(RedOf(color));
        m_table[i][1] = static_cast<std::uint8_t>(GreenOf(color));
        m_table[i][2] = static_cast<std::uint8_t>(BlueOf(color));
    }
}
