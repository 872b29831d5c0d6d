#include "view/ZoomRules.h"

#include <cstdio>

namespace zoom {

Size ZoomedSize(int width, int height, int code) {
    if (code > 0) {
        return {width * code, height * code};
    }
    const int k = code < 0 ? -code : 1;
    return {static_cast<int>(static_cast<unsigned>(width) / static_cast<unsigned>(k)),
            static_cast<int>(static_cast<unsigned>(height) / static_cast<unsigned>(k))};
}

int Normalised(int code) {
    return (code == 0 || code == -1) ? 1 : code;
}

bool StepIn(int& code, int width, int height) {
    int next = code + 1;
    if (next == -1) {
        next = 1;
    }
    const Size size = ZoomedSize(width, height, next);
    if (size.width > kMaxZoomedSize || size.height > kMaxZoomedSize) {
        return false;
    }
    if (code < kMaxMagnification) {
        code = Normalised(next);
    }
    return true;
}

bool StepOut(int& code, int width, int height) {
    if (code <= kMaxReduction) {
        return true;
    }
    int step = code - 1;
    if (step == 0) {
        step = -2;
    }
    const int smaller = width < height ? width : height;
    if (smaller + step < 0) {
        return false;
    }
    code = step;
    return true;
}

bool CanMagnifyTo(int n, int width, int height) {
    if (width <= 0 || height <= 0) {
        return false;
    }
    const int byWidth = static_cast<int>(30000.0 / width);
    const int byHeight = static_cast<int>(30000.0 / height);
    return n - 1 < (byWidth < byHeight ? byWidth : byHeight);
}

bool CanReduceTo(int n, int width, int height) {
    const int smaller = width < height ? width : height;
    return smaller - (n - 1) >= 1;
}

int ScreenOffsetToImage(int d, int code) {
    if (code <= 0) {
        return d * -code;
    }
    return d / code;
}

int SnapToGrid(int position, int code) {
    const int z = code < 0 ? -code : code;
    return z > 1 ? (position / z) * z : position;
}

std::string CaptionSuffix(int code) {
    char text[24];
    if (code >= 1) {
        std::snprintf(text, sizeof text, "(x%d)", code);
    } else {
        std::snprintf(text, sizeof text, "(1/%d)", -code);
    }
    return text;
}

} // namespace zoom
