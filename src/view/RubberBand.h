#pragma once

#include <QRect>
#include <QRegion>
#include <vector>

class CViewWindow;
class QPainter;

// The outline of a rectangle or ellipse being dragged, drawn by inverting the
// screen pixels under it (no fill). The view repaints the picture under the
// old outline when it moves, so taking it away restores the screen exactly.
class RubberBand {
public:
    // Moves the outline to the box with corners `a` and `b` (client pixels,
    // inclusive, any order) and marks the old and new pixels for repainting.
    void Show(CViewWindow* window, QPoint a, QPoint b, bool ellipse);
    void Hide(CViewWindow* window);
    void Paint(QPainter& painter) const;

    bool Visible() const { return m_visible; }
    QRect Box() const { return m_box; }
    const QRegion& Pixels() const { return m_pixels; }

    // The outline pixels of a box, as runs one pixel tall sorted by row and
    // column; every pixel appears once.
    static std::vector<QRect> OutlineRuns(const QRect& box, bool ellipse);

private:
    QRect m_box;
    bool m_ellipse = false;
    bool m_visible = false;
    std::vector<QRect> m_runs;
    QRegion m_pixels;
};
