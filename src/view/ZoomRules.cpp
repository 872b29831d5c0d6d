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

namespace {
int NextIn(int code) {
    if (code >= kLastSingleStep) {
        return code * 2;
    }
    const int next = code + 1;
    return next == -1 ? 1 : next;
}

int NextOut(int code) {
    if (code > kLastSingleStep) {
        return code / 2;
    }
    const int next = code - 1;
    return next == 0 ? -2 : next;
}

bool Fits(const Size& size, int width, int height) {
    return size.width <= width && size.height <= height;
}
} // namespace

bool StepIn(int& code, int width, int height) {
    const int next = NextIn(code);
    if (!Fits(ZoomedSize(width, height, next), kMaxZoomedSize, kMaxZoomedSize)) {
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
    const int step = NextOut(code);
    if (code > kLastSingleStep) {
        code = step;
        return true;
    }
    const int smaller = width < height ? width : height;
    if (smaller + step < 0) {
        return false;
    }
    code = step;
    return true;
}

int CodeBelow(int n) {
    return n > kLastSingleStep ? n / 2 : n - 1;
}

int FitCode(int width, int height, int clientWidth, int clientHeight) {
    for (int code = kMaxMagnification; code > kMaxReduction; code = NextOut(code)) {
        const Size size = ZoomedSize(width, height, code);
        if (Fits(size, clientWidth, clientHeight) && Fits(size, kMaxZoomedSize, kMaxZoomedSize)) {
            return code;
        }
    }
    return kMaxReduction;
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
