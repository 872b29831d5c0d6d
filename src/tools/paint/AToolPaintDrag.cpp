#include "tools/paint/AToolPaintDrag.h"

#include "image/CUndoHistory.h"
#include "tools/paint/AToolPaintCursor.h"
#include "tools/paint/AToolPaintTarget.h"
#include "paint/BrushEngine.h"
#include "view/CViewWindow.h"
#include "view/ViewHost.h"

#include <QApplication>
#include <QPainter>
#include <algorithm>

void AToolPaintDrag::Beep() {
    QApplication::beep();
}

bool AToolPaintDrag::AcceptsStart(QPoint point) {
    if (painttarget::Contains(Document(), point)) {
        return true;
    }
    Beep();
    return false;
}

QPoint AToolPaintDrag::EndFor(QPoint point, Qt::KeyboardModifiers) const {
    return point;
}

void AToolPaintDrag::OnPenDown(const PenEvent& pen) {
    if (m_dragging || Document() == nullptr || Host() == nullptr) {
        return;
    }
    EndFloatingOutside(pen.point);
    const QPoint point = painttarget::FromScreen(*this, pen.point);
    if (!AcceptsStart(point)) {
        return;
    }
    m_penSize = std::clamp(Host()->PenSize(), 1, BrushEngine::kMaxPenSize);
    m_penShape = std::clamp(Host()->PenShape(), 1, 6);
    m_dragging = true;
    m_start = point;
    m_end = EndFor(point, pen.modifiers);
    InvalidateBand();
}

void AToolPaintDrag::OnPenMove(const PenEvent& pen) {
    if (!m_dragging) {
        return;
    }
    const QPoint end = EndFor(painttarget::FromScreen(*this, pen.point), pen.modifiers);
    if (end == m_end) {
        return;
    }
    InvalidateBand();
    m_end = end;
    InvalidateBand();
    if (Window() != nullptr) {
        Window()->UpdateNow();
    }
}

void AToolPaintDrag::OnPenUp(const PenEvent& pen) {
    if (!m_dragging) {
        return;
    }
    InvalidateBand();
    m_end = EndFor(painttarget::FromScreen(*this, pen.point), pen.modifiers);
    m_dragging = false;
    Finish();
}

void AToolPaintDrag::ToolActivate() {
    paintcursor::Show(*this, Qt::CrossCursor);
}

void AToolPaintDrag::ToolDeactivate() {
    AToolOutlineView::ToolDeactivate();
    if (m_dragging) {
        InvalidateBand();
        m_dragging = false;
    }
    paintcursor::Clear(*this);
}

bool AToolPaintDrag::OnKeyDown(int key) {
    if (key != Qt::Key_Escape || !m_dragging) {
        return AToolOutlineView::OnKeyDown(key);
    }
    InvalidateBand();
    m_dragging = false;
    return true;
}

void AToolPaintDrag::PaintOverlay(QPainter& painter) {
    AToolOutlineView::PaintOverlay(painter);
    if (!m_dragging) {
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setCompositionMode(QPainter::RasterOp_NotDestination);
    painter.setPen(QPen(Qt::black, 0));
    painter.setBrush(Qt::NoBrush);
    painter.setClipRect(ImageScreenArea());
    DrawBand(painter);
    painter.restore();
}

QPoint AToolPaintDrag::ScreenOf(QPoint point) const {
    const QPoint picture = point + painttarget::Origin(Document());
    const int z = Zoom();
    return ImageToScreen(picture) + (z > 1 ? QPoint(z / 2, z / 2) : QPoint());
}

void AToolPaintDrag::InvalidateTarget(int left, int top, int right, int bottom) {
    if (Window() == nullptr) {
        return;
    }
    const QPoint origin = painttarget::Origin(Document());
    Window()->InvalidateClient(
        ImageRectToScreen(left + origin.x(), top + origin.y(), right + origin.x(), bottom + origin.y()));
}

void AToolPaintDrag::InvalidateBand() {
    const ImageRect area = BandArea();
    // The band is one screen pixel wide around pixel middles; a margin of one
    // picture pixel covers it at every zoom.
    InvalidateTarget(area.left - 1, area.top - 1, area.right + 1, area.bottom + 1);
}

bool AToolPaintDrag::BeginEdit(BrushEngine*& engine) {
    CBriselDoc* doc = Document();
    const CommandContext context = Host()->EditingContext();
    if (!context.undo.RecordRegionWithWarning(*doc)) {
        return false;
    }
    // The shape stays inside the band's area grown by the pen's reach; that
    // is what the undo step has to keep.
    const ImageRect area = BandArea();
    const int reach = (m_penSize + 1) / 2 + 1;
    if (!context.undo.SaveRegion(*doc, area.left - reach, area.top - reach, area.right + reach,
                                 area.bottom + reach)) {
        return false;
    }
    engine = &Host()->Brush();
    engine->SetTargetImage(painttarget::Image(doc));
    engine->SetReferenceImage(nullptr);
    engine->SetForegroundColor(context.foreground);
    engine->SetBackgroundColor(context.background);
    if (m_penShape == kShapeOval) {
        engine->BuildOvalTable(m_penSize);
    }
    return true;
}

void AToolPaintDrag::Modified() {
    if (CBriselDoc* doc = Document()) {
        doc->SetModifiedFlag();
        doc->UpdateAllViews();
    }
}
