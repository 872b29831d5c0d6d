#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>

class BrushEngine;
class CDibImage;
class DabCells;

// Dab operations of the touch-up brushes, on 24-bit pictures (other depths
// are left alone). Cells outside the picture are skipped.

// Points along a segment for brushes that work dab by dab: from just after
// (x1, y1) up to and including (x2, y2), at most `step` pixels apart in
// either direction, so that a step of 1 leaves no gaps between dabs.
template <class Visit> void WalkSegment(int x1, int y1, int x2, int y2, int step, Visit visit) {
    const int dx = x2 - x1;
    const int dy = y2 - y1;
    const int distance = std::max(std::abs(dx), std::abs(dy));
    const int steps = (distance + std::max(step, 1) - 1) / std::max(step, 1);
    for (int i = 1; i <= steps; ++i) {
        const auto along = [&](int from, int delta) {
            const int scaled = 2 * delta * i;
            return from + (scaled >= 0 ? scaled + steps : scaled - steps) / (2 * steps);
        };
        visit(along(x1, dx), along(y1, dy));
    }
}

// The source's pixels under the dab at (x, y) are written into the target
// (both of the same size).
void CopyDabFrom(const CDibImage& source, CDibImage& target, const DabCells& cells, int x, int y);

// The pixels under the dab at (fromX, fromY) are blended over those under the
// dab at (toX, toY): out = (strength * dragged + (256 - strength) * under +
// 128) >> 8 per channel. Cells whose source or place lies outside the picture
// stay as they are. `work` holds at least 3 bytes per cell.
void SmudgeDab(CDibImage& target, const DabCells& cells, int fromX, int fromY, int toX, int toY, int strength,
               std::uint8_t* work);

// The engine's current spray mask sprayed at every point of the walk.
void SprayAlong(BrushEngine& engine, int x1, int y1, int x2, int y2, int step);
