#pragma once

#include <functional>

class BrushEngine;

// Simulated pen pressure: a fast stroke thins by one pixel for every 10
// pixels travelled, down to a quarter of the pen size; a slow one (samples
// under 5 pixels apart) regains one pixel per sample.
struct PressureState {
    int simulatedSize = -1; // -1: simulation off
    int minimumSize = 0;
};

// The state at pen-down: on only when asked for and the pen is wider than 1.
PressureState StartPressure(int penSize, bool simulate);

// Paints one segment from (x1, y1) to (x2, y2) with the given pen width.
using SegmentPainter = std::function<void(int x1, int y1, int x2, int y2, int size)>;

// One pen move from (ax, ay) to (qx, qy) through `paint`: a single segment of
// the pen size without simulation, else the thinning walk (several segments
// of shrinking width, or one of regained width for a slow move, or none once
// the width has reached 0).
void PressureMove(PressureState& pressure, int ax, int ay, int qx, int qy, int penSize,
                  const SegmentPainter& paint);

// One pen move from (ax, ay) to (qx, qy) in draw mode 1: a plain segment
// without simulation, else the thinning walk. Oval pens get their table
// rebuilt for every width used.
void PenMove(BrushEngine& engine, PressureState& pressure, int ax, int ay, int qx, int qy, int penSize,
             int shape);

// A whole stroke through `count` points as the pen tool paints it: a dab at
// the first point, then one pen move per further point.
void PenStroke(BrushEngine& engine, const int (*points)[2], int count, int penSize, int shape, bool simulate);
