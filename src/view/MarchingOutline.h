#pragma once

#include "selection/SelectionOutline.h"

#include <QRegion>

class CBriselView;
class CDibImage;
class QPainter;

// The animated dotted outline of a selection as a view shows it. It keeps
// the border points of a mask for the area the view shows and rebuilds them
// whenever that area (scroll, zoom, window size) or the mask or its place
// changes. Each tick repaints only the outline pixels whose colour changes;
// every paint of the view draws the outline pixels at the current phase over
// the picture.
class MarchingOutline {
public:
    // Follows `mask` placed at (x, y) in image coordinates; a null mask gives
    // no outline. Rebuilds when anything changed since the last build, or
    // always when `force` is set, and then marks every outline pixel for
    // repainting. True when it rebuilt.
    bool Sync(const CBriselView& view, const CDibImage* mask, int x, int y, bool force = false);
    void Clear();

    // One animation step: marks the pixels that change colour for repainting.
    void Tick(CBriselView& view);
    // Marks every outline pixel for repainting (to take the outline away).
    void Invalidate(CBriselView& view) const;
    // Draws every outline pixel at the current phase.
    void Paint(QPainter& painter) const;
    // True when `dirty` holds only pixels that the last tick changed and the
    // outline has not been rebuilt since: painting the outline covers it all.
    bool Covers(const QRegion& dirty) const;

    const SelectionOutline& Points() const { return m_outline; }
    bool IsEmpty() const { return m_outline.IsEmpty(); }
    // The pixels the last tick marked.
    const QRegion& LastTickRegion() const { return m_lastTick; }

private:
    struct Source {
        const CDibImage* mask = nullptr;
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        OutlineViewport viewport;
    };
    static Source Describe(const CBriselView& view, const CDibImage* mask, int x, int y);
    static bool Same(const Source& a, const Source& b);

    SelectionOutline m_outline;
    Source m_source;
    bool m_built = false;
    QRegion m_lastTick;
};
