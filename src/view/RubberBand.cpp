#include "view/RubberBand.h"

#include "paint/ShapeDrawing.h"
#include "view/CViewWindow.h"
#include "view/ClientRegion.h"

#include <QPainter>
#include <algorithm>

namespace {

void AddRun(std::vector<QRect>& runs, int left, int right, int y) {
    if (left <= right) {
        runs.emplace_back(QPoint(left, y), QPoint(right, y));
    }
}

// Each row of the ellipse contributes the cells not covered by the rows
// above and below it: the ends of long rows, the whole of the first and last.
void EllipseRuns(const QRect& box, std::vector<QRect>& runs) {
    const int width = box.width();
    const int height = box.height();
    const auto extent = [&](int row, int& first, int& last) {
        if (!EllipseRowExtent(width, height, row, first, last)) {
            first = width;
            last = -1;
        }
    };
    for (int row = 0; row < height; ++row) {
        int first = 0, last = 0, upFirst = 0, upLast = 0, downFirst = 0, downLast = 0;
        extent(row, first, last);
        extent(row - 1, upFirst, upLast);
        extent(row + 1, downFirst, downLast);
        const int innerFirst = std::max({first + 1, upFirst, downFirst});
        const int innerLast = std::min({last - 1, upLast, downLast});
        const int y = box.top() + row;
        if (innerFirst > innerLast) {
            AddRun(runs, box.left() + first, box.left() + last, y);
        } else {
            AddRun(runs, box.left() + first, box.left() + innerFirst - 1, y);
            AddRun(runs, box.left() + innerLast + 1, box.left() + last, y);
        }
    }
}

void RectangleRuns(const QRect& box, std::vector<QRect>& runs) {
    for (int y = box.top(); y <= box.bottom(); ++y) {
        if (y == box.top() || y == box.bottom() || box.width() <= 2) {
            AddRun(runs, box.left(), box.right(), y);
        } else {
            AddRun(runs, box.left(), box.left(), y);
            AddRun(runs, box.right(), box.right(), y);
        }
    }
}

} // namespace

std::vector<QRect> RubberBand::OutlineRuns(const QRect& box, bool ellipse) {
    std::vector<QRect> runs;
    if (box.isEmpty()) {
        return runs;
    }
    if (ellipse) {
        EllipseRuns(box, runs);
    } else {
        RectangleRuns(box, runs);
    }
    return runs;
}

void RubberBand::Show(CViewWindow* window, QPoint a, QPoint b, bool ellipse) {
    const QRect box(QPoint(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
                    QPoint(std::max(a.x(), b.x()), std::max(a.y(), b.y())));
    if (m_visible && box == m_box && ellipse == m_ellipse) {
        return;
    }
    Hide(window);
    m_box = box;
    m_ellipse = ellipse;
    m_visible = true;
    m_runs = OutlineRuns(box, ellipse);
    m_pixels = QRegion();
    m_pixels.setRects(m_runs.data(), static_cast<int>(m_runs.size()));
    if (window != nullptr) {
        InvalidateClientRegion(*window, m_pixels);
    }
}

void RubberBand::Hide(CViewWindow* window) {
    if (!m_visible) {
        return;
    }
    m_visible = false;
    if (window != nullptr) {
        InvalidateClientRegion(*window, m_pixels);
    }
    m_runs.clear();
    m_pixels = QRegion();
}

void RubberBand::Paint(QPainter& painter) const {
    if (!m_visible) {
        return;
    }
    painter.save();
    painter.setCompositionMode(QPainter::RasterOp_NotDestination);
    for (const QRect& run : m_runs) {
        painter.fillRect(run, Qt::black);
    }
    painter.restore();
}
