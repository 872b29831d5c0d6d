#include "tools/paint/AToolPaintStroke.h"

#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "tools/paint/AToolPaintCursor.h"
#include "tools/paint/AToolPaintTarget.h"
#include "paint/BrushEngine.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"
#include "view/ViewHost.h"

#include <QApplication>
#include <algorithm>
#include <cmath>

int AToolPaintStroke::PressureSize(int penSize, double pressure) {
    const int quarter = std::max(1, penSize / 4);
    const double p = std::clamp(pressure, 0.0, 1.0);
    return quarter + static_cast<int>(std::lround((penSize - quarter) * p));
}

BrushEngine& AToolPaintStroke::Engine() {
    return Host()->Brush();
}

CDibImage* AToolPaintStroke::Target() const {
    return painttarget::Image(Document());
}

QPoint AToolPaintStroke::ToTarget(QPoint screen) const {
    return painttarget::FromScreen(*this, screen);
}

bool AToolPaintStroke::InsideTarget(QPoint point) const {
    return painttarget::Contains(Document(), point);
}

void AToolPaintStroke::PrepareShape(int size) {
    if (m_penShape == kShapeOval && size > 0) {
        Engine().BuildOvalTable(std::min(size, BrushEngine::kMaxPenSize));
    }
}

bool AToolPaintStroke::BeginStroke(BrushEngine&) {
    return true;
}

void AToolPaintStroke::PaintDab(BrushEngine& engine, int x, int y, int size) {
    engine.Dab(x, y, size, m_penShape, kModeSolid);
}

void AToolPaintStroke::PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size) {
    engine.Segment(x1, y1, x2, y2, size, m_penShape, kModeSolid);
}

void AToolPaintStroke::OnPenDown(const PenEvent& pen) {
    CBriselDoc* doc = Document();
    ViewHost* host = Host();
    if (m_drawing || doc == nullptr || host == nullptr) {
        return;
    }
    EndFloatingOutside(pen.point);
    const QPoint point = ToTarget(pen.point);
    if (!InsideTarget(point)) {
        if (BeepsOutside()) {
            QApplication::beep();
        }
        return;
    }
    const CommandContext context = host->EditingContext();
    BrushEngine& engine = Engine();
    engine.SetTargetImage(Target());
    engine.SetReferenceImage(nullptr);
    engine.SetForegroundColor(context.foreground);
    engine.SetBackgroundColor(context.background);
    m_penSize = std::clamp(host->PenSize(), 1, BrushEngine::kMaxPenSize);
    m_penShape = std::clamp(host->PenShape(), 1, 6);
    if (!BeginStroke(engine)) {
        return;
    }
    m_recording = context.undo.RecordRegionWithWarning(*doc) != 0;
    if (!m_recording && !PaintsWithoutUndo()) {
        EndStroke();
        return;
    }
    m_drawing = true;
    m_stopped = false;
    m_target = Target();
    m_fromTablet = pen.fromTablet;
    m_pressure = StartPressure(m_penSize, !m_fromTablet && UsesPressure() && host->PenPressureSimulation());
    m_currentSize = m_fromTablet ? PressureSize(m_penSize, pen.pressure) : m_penSize;
    m_targetOrigin = painttarget::Origin(doc);
    PrepareShape(m_currentSize);
    if (!SaveBeforePainting(point.x(), point.y(), point.x(), point.y())) {
        return;
    }
    PaintDab(engine, point.x(), point.y(), m_currentSize);
    m_last = point;
    InvalidateAround(point.x(), point.y(), point.x(), point.y());
}

void AToolPaintStroke::OnPenMove(const PenEvent& pen) {
    if (!m_drawing) {
        return;
    }
    if (m_stopped || m_target != Target()) {
        return;
    }
    const QPoint to = ScreenToImage(pen.point) - m_targetOrigin;
    if (to == m_last) {
        return;
    }
    PaintMove(to, pen);
}

void AToolPaintStroke::PaintMove(QPoint to, const PenEvent& pen) {
    BrushEngine& engine = Engine();
    const QPoint from = m_last;
    if (!SaveBeforePainting(std::min(from.x(), to.x()), std::min(from.y(), to.y()), std::max(from.x(), to.x()),
                            std::max(from.y(), to.y()))) {
        return;
    }
    auto paint = [this, &engine](int x1, int y1, int x2, int y2, int size) {
        m_currentSize = size;
        PrepareShape(size);
        PaintSegment(engine, x1, y1, x2, y2, size);
    };
    if (m_fromTablet) {
        paint(from.x(), from.y(), to.x(), to.y(), PressureSize(m_penSize, pen.pressure));
    } else {
        PressureMove(m_pressure, from.x(), from.y(), to.x(), to.y(), m_penSize, paint);
    }
    m_last = to;
    InvalidateAround(std::min(from.x(), to.x()), std::min(from.y(), to.y()), std::max(from.x(), to.x()),
                     std::max(from.y(), to.y()));
}

void AToolPaintStroke::OnPenUp(const PenEvent&) {
    if (!m_drawing) {
        return;
    }
    m_drawing = false;
    EndStroke();
    Engine().SetReferenceImage(nullptr);
    if (CBriselDoc* doc = Document()) {
        doc->SetModifiedFlag();
        doc->UpdateAllViews();
    }
}

void AToolPaintStroke::ToolActivate() {
    paintcursor::Show(*this, Qt::CrossCursor);
}

void AToolPaintStroke::ToolDeactivate() {
    AToolOutlineView::ToolDeactivate();
    if (m_drawing) {
        OnPenUp(PenEvent{});
    }
    paintcursor::Clear(*this);
}

int AToolPaintStroke::Reach() const {
    return (m_penSize + 1) / 2 + 1 + ExtraReach();
}

bool AToolPaintStroke::SaveBeforePainting(int left, int top, int right, int bottom) {
    if (!m_recording) {
        return true;
    }
    const int reach = Reach();
    CBriselDoc* doc = Document();
    ViewHost* host = Host();
    if (doc != nullptr && host != nullptr &&
        host->EditingContext().undo.SaveRegion(*doc, left - reach, top - reach, right + reach, bottom + reach)) {
        return true;
    }
    // The stroke's undo step was closed by a command (or memory ran out):
    // painting on would change the picture behind the history's back.
    m_recording = false;
    m_stopped = true;
    return false;
}

void AToolPaintStroke::InvalidateAround(int left, int top, int right, int bottom) {
    const int reach = Reach();
    InvalidateImageRect(left - reach + m_targetOrigin.x(), top - reach + m_targetOrigin.y(),
                        right + reach + m_targetOrigin.x(), bottom + reach + m_targetOrigin.y());
}
