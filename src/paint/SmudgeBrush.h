#pragma once

#include "paint/DabCells.h"
#include "platform/HeapBlock.h"

class CDibImage;

// Smudge: the stroke drags colour along. Dabs follow the path a quarter of
// the pen size apart, and each blends the pixels under the previous dab (as
// already smudged) into its own place, so colour fades out over a few pen
// widths behind where it was picked up.
class SmudgeBrush {
public:
    // Share of the dragged pixels in each blend, in 256ths.
    static constexpr int kStrength = 192;

    // 1, or 0 when the work buffer cannot be had.
    int Begin();
    void Segment(CDibImage& target, int x1, int y1, int x2, int y2, int size, int shape);
    void End() { m_work.reset(); }

    // The distance between dabs for a pen size.
    static int Spacing(int size);

private:
    platform::HeapBlock m_work;
    DabCells m_cells;
};
