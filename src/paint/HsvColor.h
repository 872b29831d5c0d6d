#pragma once

#include "image/DibTypes.h"

// The integer hue, saturation and value rules of the gradient ramp. Hue in
// degrees (for a red maximum it may be negative down to -59: it is not
// wrapped), saturation and value 0..255.
struct HsvColor {
    int hue = 0;
    int saturation = 0;
    int value = 0;
};

HsvColor HsvFromColor(ColorWord color);
// The hue is first brought into 0..359 by adding or subtracting 360 once.
ColorWord ColorFromHsv(int hue, int saturation, int value);
