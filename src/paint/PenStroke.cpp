#include "paint/PenStroke.h"

#include "paint/BrushEngine.h"

#include <algorithm>
#include <cmath>

namespace {

void PrepareOval(BrushEngine& engine, int shape, int size) {
    if (shape == kShapeOval && size > 0) {
        engine.BuildOvalTable(size);
    }
}

// Segments of width s every 10 pixels along the move, the last one ending
// exactly at the target; s shrinks after each, and the walk stops at 0.
int ThinningWalk(const PressureState& pressure, int ax, int ay, int dx, int dy, int distance, int s,
                 const SegmentPainter& paint) {
    const double ux = static_cast<double>(dx) / distance;
    const double uy = static_cast<double>(dy) / distance;
    int previousX = ax;
    int previousY = ay;
    for (int t = 10;; t += 10) {
        t = std::min(t, distance);
        const int x = ax + static_cast<int>(t * ux + 0.5);
        const int y = ay + static_cast<int>(t * uy + 0.5);
        paint(previousX, previousY, x, y, s);
        previousX = x;
        previousY = y;
        s = s > pressure.minimumSize ? s - 1 : pressure.minimumSize;
        if (s == 0 || t == distance) {
            break;
        }
    }
    return s;
}

} // namespace

PressureState StartPressure(int penSize, bool simulate) {
    PressureState state;
    if (simulate && penSize > 1) {
        state.simulatedSize = penSize;
        state.minimumSize = penSize >> 2;
    }
    return state;
}

void PressureMove(PressureState& pressure, int ax, int ay, int qx, int qy, int penSize,
                  const SegmentPainter& paint) {
    if (pressure.simulatedSize < 0) {
        paint(ax, ay, qx, qy, penSize);
        return;
    }
    const int dx = qx - ax;
    const int dy = qy - ay;
    const int distance =
        static_cast<int>(std::sqrt(static_cast<double>(dx) * dx + static_cast<double>(dy) * dy));
    int s = std::min(pressure.simulatedSize, penSize);
    if (distance < 10) {
        if (distance < 5 && s < penSize) {
            ++s;
        }
        if (s > 0) {
            paint(ax, ay, qx, qy, s);
        }
    } else if (s > 0) {
        s = ThinningWalk(pressure, ax, ay, dx, dy, distance, s, paint);
    }
    pressure.simulatedSize = s;
}

void PenMove(BrushEngine& engine, PressureState& pressure, int ax, int ay, int qx, int qy, int penSize,
             int shape) {
    PressureMove(pressure, ax, ay, qx, qy, penSize,
                 [&engine, shape](int x1, int y1, int x2, int y2, int size) {
                     PrepareOval(engine, shape, size);
                     engine.Segment(x1, y1, x2, y2, size, shape, kModeSolid);
                 });
}

void PenStroke(BrushEngine& engine, const int (*points)[2], int count, int penSize, int shape,
               bool simulate) {
    if (count < 1) {
        return;
    }
    PrepareOval(engine, shape, penSize);
    engine.Dab(points[0][0], points[0][1], penSize, shape, kModeSolid);
    PressureState pressure = StartPressure(penSize, simulate);
    for (int i = 1; i < count; ++i) {
        PenMove(engine, pressure, points[i - 1][0], points[i - 1][1], points[i][0], points[i][1], penSize,
                shape);
    }
}
