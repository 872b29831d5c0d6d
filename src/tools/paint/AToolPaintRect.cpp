#include "tools/paint/AToolPaintRect.h"

#include "paint/BrushEngine.h"
#include "paint/ShapeDrawing.h"
#include "platform/Settings.h"

#include <QPainter>
#include <algorithm>

void AToolPaintRect::SetOptions(int drawStyle, bool fromCentre) {
    m_drawStyle = std::clamp(drawStyle, 0, 2);
    m_fromCentre = fromCentre;
}

void AToolPaintRect::ReadOptions() {
    const char* section = Section(m_ellipse);
    SetOptions(platform::Settings::ReadInt(section, "DrawStyle", 0),
               platform::Settings::ReadInt(section, "DrawFromCenter", 0) != 0);
}

void AToolPaintRect::ToolActivate() {
    AToolPaintDrag::ToolActivate();
    ReadOptions();
}

bool AToolPaintRect::AcceptsStart(QPoint point) {
    // The options dialog may have changed them since activation.
    ReadOptions();
    return AToolPaintDrag::AcceptsStart(point);
}

QPoint AToolPaintRect::EndFor(QPoint point, Qt::KeyboardModifiers modifiers) const {
    int x = point.x();
    int y = point.y();
    if (modifiers & Qt::ShiftModifier) {
        ConstrainToSquare(Start().x(), Start().y(), x, y);
    }
    return {x, y};
}

QPoint AToolPaintRect::FirstCorner() const {
    return m_fromCentre ? 2 * Start() - End() : Start();
}

ImageRect AToolPaintRect::BandArea() const {
    const QPoint a = FirstCorner();
    const QPoint b = End();
    return ImageRect{std::min(a.x(), b.x()), std::min(a.y(), b.y()), std::max(a.x(), b.x()),
                     std::max(a.y(), b.y())};
}

void AToolPaintRect::DrawBand(QPainter& painter) const {
    const QRect band = QRect(ScreenOf(FirstCorner()), ScreenOf(End())).normalized().adjusted(0, 0, -1, -1);
    if (m_ellipse) {
        painter.drawEllipse(band);
    } else {
        painter.drawRect(band);
    }
}

void AToolPaintRect::Finish() {
    BrushEngine* engine = nullptr;
    if (!BeginEdit(engine)) {
        return;
    }
    const ImageRect box = BandArea();
    if (m_ellipse) {
        DrawEllipseShape(*engine, box.left, box.top, box.right, box.bottom, PenSize(), m_drawStyle);
    } else {
        DrawRectangleShape(*engine, box.left, box.top, box.right, box.bottom, PenSize(), m_drawStyle);
    }
    InvalidateTarget(box.left - 1, box.top - 1, box.right + 1, box.bottom + 1);
    Modified();
}
