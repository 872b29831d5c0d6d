#include "tools/paint/AToolPaintClone.h"

#include "dialogs/CloneOptionsDialog.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"
#include "view/CViewWindow.h"

#include <QApplication>
#include <QPainter>

void AToolPaintClone::OnPenDown(const PenEvent& pen) {
    if (Drawing()) {
        return;
    }
    const QPoint point = ScreenToImage(pen.point);
    if (pen.modifiers.testFlag(Qt::ControlModifier)) {
        m_stamp.SetSource(point.x(), point.y());
        MoveCrosshair(point);
        return;
    }
    m_penDown = point;
    AToolPaintStroke::OnPenDown(pen);
}

void AToolPaintClone::OnPenMove(const PenEvent& pen) {
    AToolPaintStroke::OnPenMove(pen);
    if (Drawing() && m_stamp.OffsetFixed()) {
        const QPoint point = ScreenToImage(pen.point);
        MoveCrosshair(point - QPoint(m_stamp.OffsetX(), m_stamp.OffsetY()));
    }
}

void AToolPaintClone::OnPenUp(const PenEvent& pen) {
    const bool wasDrawing = Drawing();
    AToolPaintStroke::OnPenUp(pen);
    // Not aligned, the next stroke starts again from the source point.
    if (wasDrawing && !m_aligned && m_stamp.HasSource()) {
        MoveCrosshair(QPoint(m_stamp.SourceX(), m_stamp.SourceY()));
    }
}

bool AToolPaintClone::BeginStroke(BrushEngine& engine) {
    m_aligned = CloneOptionsDialog::ReadAligned();
    if (!m_stamp.FixOffset(m_penDown.x(), m_penDown.y(), m_aligned)) {
        QApplication::beep();
        return false;
    }
    if (!m_stamp.BeginStroke(engine, *Target())) {
        platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
        return false;
    }
    MoveCrosshair(m_penDown - QPoint(m_stamp.OffsetX(), m_stamp.OffsetY()));
    return true;
}

void AToolPaintClone::PaintDab(BrushEngine& engine, int x, int y, int size) {
    m_stamp.Dab(engine, x, y, size, PenShape());
}

void AToolPaintClone::PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size) {
    m_stamp.Segment(engine, x1, y1, x2, y2, size, PenShape());
}

void AToolPaintClone::EndStroke() {
    m_stamp.EndStroke(Engine());
}

std::optional<QPoint> AToolPaintClone::Crosshair() const {
    if (!m_stamp.HasSource()) {
        return std::nullopt;
    }
    return m_crosshair;
}

void AToolPaintClone::MoveCrosshair(QPoint picturePoint) {
    InvalidateCrosshair();
    m_crosshair = picturePoint;
    InvalidateCrosshair();
}

void AToolPaintClone::InvalidateCrosshair() {
    if (Window() == nullptr || !m_stamp.HasSource()) {
        return;
    }
    const QPoint centre =
        ImageRectToScreen(m_crosshair.x(), m_crosshair.y(), m_crosshair.x(), m_crosshair.y()).center();
    const int reach = kCrosshairReach + 2;
    Window()->InvalidateClient(QRect(centre - QPoint(reach, reach), QSize(2 * reach + 1, 2 * reach + 1)));
}

void AToolPaintClone::PaintOverlay(QPainter& painter) {
    AToolPaintStroke::PaintOverlay(painter);
    if (!m_stamp.HasSource()) {
        return;
    }
    const QPoint centre =
        ImageRectToScreen(m_crosshair.x(), m_crosshair.y(), m_crosshair.x(), m_crosshair.y()).center();
    const int r = kCrosshairReach;
    // A dark line inside a light one, visible over any picture.
    for (const auto& [color, width] : {std::pair{QColor(Qt::white), 3}, std::pair{QColor(Qt::black), 1}}) {
        painter.setPen(QPen(color, width));
        painter.drawLine(centre - QPoint(r, 0), centre + QPoint(r, 0));
        painter.drawLine(centre - QPoint(0, r), centre + QPoint(0, r));
    }
}
