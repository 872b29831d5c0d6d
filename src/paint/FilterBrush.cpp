#include "paint/FilterBrush.h"

#include "paint/TouchUpDabs.h"

int FilterBrush::Begin(const CDibImage& picture, int strength) {
    return m_reference.TakeFiltered(picture, strength);
}

bool FilterBrush::Ready(int size, int shape) {
    if (m_reference.Image() == nullptr) {
        return false;
    }
    return m_cells.Matches(size, shape) || m_cells.Build(size, shape) != 0;
}

void FilterBrush::Dab(CDibImage& target, int x, int y, int size, int shape) {
    if (Ready(size, shape)) {
        CopyDabFrom(*m_reference.Image(), target, m_cells, x, y);
    }
}

void FilterBrush::Segment(CDibImage& target, int x1, int y1, int x2, int y2, int size, int shape) {
    if (!Ready(size, shape)) {
        return;
    }
    WalkSegment(x1, y1, x2, y2, 1,
                [&](int x, int y) { CopyDabFrom(*m_reference.Image(), target, m_cells, x, y); });
}
