#include "tools/paint/AToolPaintMove.h"

#include "image/CBriselDoc.h"
#include "tools/paint/AToolPaintCursor.h"
#include "tools/select/FloatingHandles.h"
#include "view/CViewWindow.h"

bool AToolPaintMove::Inside(QPoint point) const {
    const ViewState& state = State();
    return point.x() >= 0 && point.y() >= 0 && point.x() < state.imageWidth && point.y() < state.imageHeight;
}

void AToolPaintMove::OnPenDown(const PenEvent& pen) {
    const QPoint point = ScreenToImage(pen.point);
    if (m_dragging || m_handleDrag.Active() || Window() == nullptr) {
        return;
    }
    if (m_handleDrag.Begin(*this, pen.point)) {
        StopOutlineTimer();
        return;
    }
    if (!Inside(point)) {
        return;
    }
    m_dragging = true;
    m_grabbed = point;
    m_outlineWasEnabled = State().outlineEnabled;
    DisableOutline();
    paintcursor::Show(*this, Qt::ClosedHandCursor);
}

void AToolPaintMove::OnPenMove(const PenEvent& pen) {
    if (m_handleDrag.Active()) {
        m_handleDrag.MoveAndShow(*this, pen);
        return;
    }
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

void AToolPaintMove::OnPenUp(const PenEvent& pen) {
    if (m_handleDrag.Active()) {
        m_handleDrag.MoveAndShow(*this, pen);
        m_handleDrag.Finish(*this, true);
        RestartOutlineIfSelected();
        return;
    }
    if (!m_dragging) {
        return;
    }
    m_dragging = false;
    paintcursor::Show(*this, Qt::OpenHandCursor);
    if (m_outlineWasEnabled) {
        EnableOutline();
    }
}

bool AToolPaintMove::OnKeyDown(int key) {
    if (key == Qt::Key_Escape && m_handleDrag.Active()) {
        m_handleDrag.Finish(*this, false);
        RestartOutlineIfSelected();
        return true;
    }
    if (!m_dragging && FloatingHandleDrag::PutDownOnEnter(*this, key)) {
        return true;
    }
    return CBriselView::OnKeyDown(key);
}

void AToolPaintMove::OnPointerHover(QPoint client) {
    const int handle = FloatingHandleDrag::HandleAt(*this, client);
    if (handle != m_hoverHandle) {
        m_hoverHandle = handle;
        paintcursor::Show(*this, handle < 0 ? Qt::OpenHandCursor : FloatingHandles::CursorOf(handle));
    }
}

void AToolPaintMove::PaintOverlay(QPainter& painter) {
    if (m_handleDrag.Active()) {
        m_handleDrag.PaintPreview(*this, painter);
        return;
    }
    AToolOutlineView::PaintOverlay(painter);
    FloatingHandleDrag::PaintHandles(*this, painter);
}

void AToolPaintMove::ToolActivate() {
    paintcursor::Show(*this, Qt::OpenHandCursor);
    if (Window() != nullptr) {
        Window()->InvalidateAll();
    }
}

void AToolPaintMove::ToolDeactivate() {
    if (m_handleDrag.Active()) {
        m_handleDrag.Finish(*this, false);
    }
    AToolOutlineView::ToolDeactivate();
    OnPenUp(PenEvent{});
    paintcursor::Clear(*this);
    if (Window() != nullptr) {
        Window()->InvalidateAll();
    }
}
