#include "paint/SmudgeBrush.h"

#include "paint/BrushEngine.h"
#include "paint/TouchUpDabs.h"

#include <algorithm>

int SmudgeBrush::Begin() {
    m_work = platform::HeapBlock::Allocate(3 * BrushEngine::kMaxPenSize * BrushEngine::kMaxPenSize);
    return m_work ? 1 : 0;
}

int SmudgeBrush::Spacing(int size) {
    return std::max(1, size / 4);
}

void SmudgeBrush::Segment(CDibImage& target, int x1, int y1, int x2, int y2, int size, int shape) {
    if (!m_work || (!m_cells.Matches(size, shape) && m_cells.Build(size, shape) == 0)) {
        return;
    }
    int fromX = x1;
    int fromY = y1;
    WalkSegment(x1, y1, x2, y2, Spacing(size), [&](int x, int y) {
        SmudgeDab(target, m_cells, fromX, fromY, x, y, kStrength, m_work.data());
        fromX = x;
        fromY = y;
    });
}
