#pragma once

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

// One pen move from (ax, ay) to (qx, qy) in draw mode 1: a plain segment
// without simulation, else the thinning walk. Oval pens get their table
// rebuilt for every width used.
void PenMove(BrushEngine& engine, PressureState& pressure, int ax, int ay, int qx, int qy, int penSize,
             int shape);

// A whole stroke through `count` points as the pen tool paints it: a dab at
// the first point, then one pen move per further point.
void PenStroke(BrushEngine& engine, const int (*points)[2], int count, int penSize, int shape, bool simulate);
