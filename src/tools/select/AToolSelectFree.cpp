#include "tools/select/AToolSelectFree.h"

#include "selection/SelectionPolygon.h"
#include "view/CViewWindow.h"

#include <QPainter>
#include <QPolygon>
#include <algorithm>
#include <cstdlib>

namespace {
OutlineEntry ToEntry(QPoint image) {
    const auto clamp16 = [](int v) { return static_cast<std::int16_t>(std::clamp(v, -32768, 32767)); };
    return OutlineEntry{clamp16(image.x()), clamp16(image.y())};
}
} // namespace

bool AToolSelectFree::AcceptsPress(QPoint image) const {
    return image.x() >= 0 && image.y() >= 0 && image.x() < State().imageWidth &&
           image.y() < State().imageHeight;
}

QPoint AToolSelectFree::PathPointOnScreen(const OutlineEntry& point) const {
    // The middle of the image pixel on screen.
    const int half = Zoom() > 1 ? Zoom() / 2 : 0;
    return ImageToScreen({point.x, point.y}) + QPoint(half, half);
}

void AToolSelectFree::InvalidateSegment(const OutlineEntry& from, const OutlineEntry& to) {
    const QPoint a = PathPointOnScreen(from);
    const QPoint b = PathPointOnScreen(to);
    const QRect segment(QPoint(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
                        QPoint(std::max(a.x(), b.x()), std::max(a.y(), b.y())));
    Window()->InvalidateClient(segment.adjusted(-2, -2, 2, 2));
}

void AToolSelectFree::InvalidatePath() {
    for (std::size_t i = 1; i < m_points.size(); ++i) {
        InvalidateSegment(m_points[i - 1], m_points[i]);
    }
    if (m_points.size() > 1) {
        InvalidateSegment(m_points.back(), m_points.front());
    }
}

void AToolSelectFree::BeginShape(const PenEvent&, QPoint image) {
    StopOutlineTimer();
    if (DragMode() == kNew) {
        InvalidateSelection();
    }
    m_points.assign(1, ToEntry(image));
    Window()->UpdateNow();
}

void AToolSelectFree::ContinueShape(const PenEvent&, QPoint image) {
    const OutlineEntry point = ToEntry(image);
    if (point == m_points.back()) {
        return;
    }
    m_points.push_back(point);
    InvalidateSegment(m_points[m_points.size() - 2], point);
    Window()->UpdateNow();
}

void AToolSelectFree::FinishShape(const PenEvent&, QPoint) {
    InvalidatePath();
    CommandContext context = Context();
    SelectPolygon(context, m_points, CombineOf(DragMode()));
    m_points.clear();
    Window()->InvalidateAll();
    RestartOutlineIfSelected();
}

bool AToolSelectFree::CancelShape() {
    InvalidatePath();
    m_points.clear();
    return true;
}

void AToolSelectFree::PaintOverlay(QPainter& painter) {
    AToolSelect::PaintOverlay(painter);
    if (m_points.size() < 2) {
        return;
    }
    QPolygon path;
    for (const OutlineEntry& point : m_points) {
        path.append(PathPointOnScreen(point));
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(Qt::black, 0));
    painter.drawPolyline(path);
    QPen dashes(Qt::white, 0);
    dashes.setDashPattern({4, 4});
    painter.setPen(dashes);
    painter.drawPolyline(path);
    painter.restore();
}
