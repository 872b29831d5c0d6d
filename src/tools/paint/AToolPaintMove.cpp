#include "tools/paint/AToolPaintMove.h"

#include "tools/paint/AToolPaintCursor.h"
#include "view/CViewWindow.h"

bool AToolPaintMove::Inside(QPoint point) const {
    const ViewState& state = State();
    return point.x() >= 0 && point.y() >= 0 && point.x() < state.imageWidth && point.y() < state.imageHeight;
}

void AToolPaintMove::OnPenDown(const PenEvent& pen) {
    const QPoint point = ScreenToImage(pen.point);
    if (m_dragging || Window() == nullptr || !Inside(point)) {
        return;
    }
    m_dragging = true;
    m_grabbed = point;
    m_outlineWasEnabled = State().outlineEnabled;
    DisableOutline();
    paintcursor::Show(*this, Qt::ClosedHandCursor);
}

void AToolPaintMove::OnPenMove(const PenEvent& pen) {
    const QPoint point = ScreenToImage(pen.point);
    if (!m_dragging || !Inside(point)) {
        return;
    }
    const ViewState& state = State();
    const int dx = state.imageWidth > state.visibleImageWidth ? point.x() - m_grabbed.x() : 0;
    const int dy = state.imageHeight > state.visibleImageHeight ? point.y() - m_grabbed.y() : 0;
    if (dx == 0 && dy == 0) {
        return;
    }
    const int z = Zoom();
    auto toScreen = [z](int pixels) { return z >= 1 ? pixels * z : pixels / -z; };
    ScrollToPosition(Window()->ScrollX() - toScreen(dx), Window()->ScrollY() - toScreen(dy));
    Window()->UpdateNow();
}

void AToolPaintMove::OnPenUp(const PenEvent&) {
    if (!m_dragging) {
        return;
    }
    m_dragging = false;
    paintcursor::Show(*this, Qt::OpenHandCursor);
    if (m_outlineWasEnabled) {
        EnableOutline();
    }
}

void AToolPaintMove::ToolActivate() {
    paintcursor::Show(*this, Qt::OpenHandCursor);
}

void AToolPaintMove::ToolDeactivate() {
    AToolOutlineView::ToolDeactivate();
    OnPenUp(PenEvent{});
    paintcursor::Clear(*this);
}
