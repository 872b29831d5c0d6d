#include "selection/SelectionOutline.h"

#include "image/CDibImage.h"

#include <algorithm>

namespace {

int ToScreen(int image, int zoom, int scroll, int origin) {
    if (zoom >= 1) {
        return zoom * image - scroll + origin;
    }
    return origin + image / -zoom - scroll;
}

} // namespace

void SelectionOutline::Clear() {
    m_entries.clear();
    m_phase = 0;
    m_fullDraw = true;
}

// A border point at the screen position of the selected pixel of a differing
// pair; `farEdge` puts it on that pixel's right (vertical border) or bottom
// (horizontal border) screen edge when the neighbour, not the current pixel,
// is the selected one. At zoom z >= 2 the point is followed by a run of z - 1
// pixels along the border.
void SelectionOutline::AddBorder(int x, int y, bool vertical, bool farEdge, const OutlineViewport& viewport) {
    const int zoom = viewport.zoom;
    int sx = ToScreen(x, zoom, viewport.scrollX, viewport.originX);
    int sy = ToScreen(y, zoom, viewport.scrollY, viewport.originY);
    if (zoom >= 2 && farEdge) {
        (vertical ? sx : sy) += zoom - 1;
    }
    if (sx < 0 || sy < 0 || sx > 32767 || sy > 32767) {
        return;
    }
    m_entries.push_back(OutlineEntry{static_cast<std::int16_t>(sx), static_cast<std::int16_t>(sy)});
    if (zoom >= 2) {
        const auto run = static_cast<std::int16_t>(-(zoom - 1));
        m_entries.push_back(vertical ? OutlineEntry{0, run} : OutlineEntry{run, 0});
    }
}

// The scan covers the visible part of the mask's rectangle plus one column
// and row past its right and bottom edges, so that the borders of pixels on
// those edges are found by comparing with the (unselected) outside.
void SelectionOutline::Build(const CDibImage* floatMask, int floatX, int floatY,
                             const OutlineViewport& viewport) {
    Clear();
    if (floatMask == nullptr) {
        return;
    }
    const int step = viewport.zoom <= -2 ? -viewport.zoom : 1;
    const int left = std::max(viewport.firstX, floatX);
    const int top = std::max(viewport.firstY, floatY);
    const int right = std::min(viewport.firstX + viewport.visibleWidth - 1, floatX + floatMask->Width());
    const int bottom = std::min(viewport.firstY + viewport.visibleHeight - 1, floatY + floatMask->Height());
    if (left > right || top > bottom) {
        return;
    }
    const auto bit = [&](int x, int y) { return floatMask->GetBit(x - floatX, y - floatY); };
    for (int y = top; y <= bottom; y += step) {
        for (int x = left; x <= right; x += step) {
            const int here = bit(x, y);
            const int leftBit = bit(x - step, y);
            const int aboveBit = bit(x, y - step);
            if (here != leftBit) {
                AddBorder(here ? x : x - step, y, true, !here, viewport);
            }
            if (here != aboveBit) {
                AddBorder(x, here ? y : y - step, false, !here, viewport);
            }
        }
    }
}
