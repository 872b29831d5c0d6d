#pragma once

#include "paint/DabCells.h"
#include "paint/StrokeReference.h"

class CDibImage;

// Blur and Sharpen under the pen: the picture is filtered once at pen-down
// with the 3 x 3 rule of the Blur Small or Sharpen Small filter, and every dab
// copies the filtered pixels under it. Passing over a place again within the
// stroke therefore changes nothing more; the next stroke starts from the
// picture as it is then.
class FilterBrush {
public:
    static constexpr int kBlurSmall = 1;
    static constexpr int kSharpenSmall = 4;

    // 1, or 0 when the filtered copy cannot be had (nothing is drawn then).
    int Begin(const CDibImage& picture, int strength);
    void Dab(CDibImage& target, int x, int y, int size, int shape);
    // Dabs at every pixel step from just after (x1, y1) to (x2, y2).
    void Segment(CDibImage& target, int x1, int y1, int x2, int y2, int size, int shape);
    void End() { m_reference.Release(); }

private:
    bool Ready(int size, int shape);

    StrokeReference m_reference;
    DabCells m_cells;
};
