#include "paint/AToolPaintColorPen.h"

#include <algorithm>

int AToolPaintColorPen::Spacing(int size) const {
    return std::max(1, size / 4);
}
