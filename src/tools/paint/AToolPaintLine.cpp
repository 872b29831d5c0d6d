#include "tools/paint/AToolPaintLine.h"

#include "tools/paint/AToolPaintTarget.h"
#include "paint/BrushEngine.h"
#include "paint/ShapeDrawing.h"

#include <QPainter>
#include <algorithm>

QPoint AToolPaintLine::EndFor(QPoint point, Qt::KeyboardModifiers modifiers) const {
    const CDibImage* image = painttarget::Image(Document());
    int x = std::clamp(point.x(), 0, image->Width() - 1);
    int y = std::clamp(point.y(), 0, image->Height() - 1);
    if (modifiers & Qt::ShiftModifier) {
        SnapLineEnd(Start().x(), Start().y(), x, y);
    }
    return {x, y};
}

void AToolPaintLine::DrawBand(QPainter& painter) const {
    painter.drawLine(ScreenOf(Start()), ScreenOf(End()));
}

ImageRect AToolPaintLine::BandArea() const {
    return ImageRect{std::min(Start().x(), End().x()), std::min(Start().y(), End().y()),
                     std::max(Start().x(), End().x()), std::max(Start().y(), End().y())};
}

void AToolPaintLine::Finish() {
    BrushEngine* engine = nullptr;
    if (!BeginEdit(engine)) {
        return;
    }
    engine->Segment(Start().x(), Start().y(), End().x(), End().y(), PenSize(), PenShape(), kModeSolid);
    const ImageRect area = BandArea();
    const int reach = (PenSize() + 1) / 2 + 1;
    InvalidateTarget(area.left - reach, area.top - reach, area.right + reach, area.bottom + reach);
    Modified();
}
