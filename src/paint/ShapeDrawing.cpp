#include "paint/ShapeDrawing.h"

#include "image/CDibImage.h"
#include "paint/BrushEngine.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

struct Box {
    int left, top, right, bottom;
    int Width() const { return right - left + 1; }
    int Height() const { return bottom - top + 1; }
};

Box Ordered(int x0, int y0, int x1, int y1) {
    return Box{std::min(x0, x1), std::min(y0, y1), std::max(x0, x1), std::max(y0, y1)};
}

// Paints with the background colour for the duration of one fill.
template <class Fill>
void WithBackground(BrushEngine& engine, ColorWord foreground, ColorWord background, Fill&& fill) {
    engine.SetForegroundColor(background);
    fill();
    engine.SetForegroundColor(foreground);
}

} // namespace

void DrawRectangleShape(BrushEngine& engine, int x0, int y0, int x1, int y1, int thickness, int style) {
    const Box box = Ordered(x0, y0, x1, y1);
    const int t = std::max(thickness, 1);
    if (style == 2 || 2 * t >= box.Width() || 2 * t >= box.Height()) {
        engine.FillRect(box.left, box.top, box.right, box.bottom, kModeSolid);
        return;
    }
    engine.FillRect(box.left, box.top, box.right, box.top + t - 1, kModeSolid);
    engine.FillRect(box.left, box.bottom - t + 1, box.right, box.bottom, kModeSolid);
    engine.FillRect(box.left, box.top + t, box.left + t - 1, box.bottom - t, kModeSolid);
    engine.FillRect(box.right - t + 1, box.top + t, box.right, box.bottom - t, kModeSolid);
    if (style == 1) {
        WithBackground(engine, engine.Foreground(), engine.Background(), [&] {
            engine.FillRect(box.left + t, box.top + t, box.right - t, box.bottom - t, kModeSolid);
        });
    }
}

// A pixel belongs to a row of the ellipse (semi-axes width / 2 and height / 2
// around the box's centre) when its centre column lies inside the ellipse
// somewhere within the row's height, so the middle rows reach both sides and
// the top and bottom rows are never empty.
bool EllipseRowExtent(int width, int height, int row, int& first, int& last) {
    if (width < 1 || height < 1 || row < 0 || row >= height) {
        return false;
    }
    const double ry = height / 2.0;
    const double rx = width / 2.0;
    const double nearest = std::max(0.0, std::abs(row + 0.5 - ry) - 0.5) / ry;
    const double half = rx * std::sqrt(std::max(0.0, 1.0 - nearest * nearest));
    first = static_cast<int>(std::ceil(rx - half - 0.5));
    last = width - 1 - first;
    if (first > last) {
        first = (width - 1) / 2;
        last = width / 2;
    }
    return true;
}

void DrawEllipseShape(BrushEngine& engine, int x0, int y0, int x1, int y1, int thickness, int style) {
    const Box box = Ordered(x0, y0, x1, y1);
    const int t = std::max(thickness, 1);
    const Box inner{box.left + t, box.top + t, box.right - t, box.bottom - t};
    const bool ring = style != 2 && inner.Width() > 0 && inner.Height() > 0;
    const ColorWord foreground = engine.Foreground();
    const auto span = [&engine](int left, int right, int y) {
        if (left <= right) {
            engine.FillSpan(left, right, y, kModeSolid);
        }
    };
    // Only the rows inside the target are worked out, however tall the box.
    const CDibImage* target = engine.TargetImage();
    if (target == nullptr) {
        return;
    }
    const int firstRow = std::max(box.top, 0) - box.top;
    const int lastRow = std::min(box.bottom, target->Height() - 1) - box.top;
    for (int row = firstRow; row <= lastRow; ++row) {
        int first = 0;
        int last = 0;
        EllipseRowExtent(box.Width(), box.Height(), row, first, last);
        const int y = box.top + row;
        int innerFirst = 0;
        int innerLast = 0;
        if (!ring || !EllipseRowExtent(inner.Width(), inner.Height(), y - inner.top, innerFirst, innerLast)) {
            span(box.left + first, box.left + last, y);
            continue;
        }
        span(box.left + first, inner.left + innerFirst - 1, y);
        span(inner.left + innerLast + 1, box.left + last, y);
        if (style == 1) {
            WithBackground(engine, foreground, engine.Background(),
                           [&] { span(inner.left + innerFirst, inner.left + innerLast, y); });
        }
    }
}

void ConstrainToSquare(int x0, int y0, int& x1, int& y1) {
    const int n = std::min(std::abs(x1 - x0), std::abs(y1 - y0));
    x1 = x1 - x0 >= 0 ? x0 + n : x0 - n;
    y1 = y1 - y0 > 0 ? y0 + n : y0 - n;
}

void SnapLineEnd(int x0, int y0, int& x1, int& y1) {
    const int dx = x1 - x0;
    const int dy = y1 - y0;
    const double slope = dx == 0 ? 3.0 : std::abs(static_cast<double>(dy) / dx);
    if (slope < 0.5) {
        y1 = y0;
    } else if (slope <= 2.0) {
        x1 = x0 + dx;
        y1 = (dx > 0) == (dy > 0) ? y0 + dx : y0 - dx;
    } else {
        x1 = x0;
    }
}
