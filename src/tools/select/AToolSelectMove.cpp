#include "tools/select/AToolSelectMove.h"

#include "image/CBriselDoc.h"
#include "selection/SelectionMove.h"
#include "view/CViewWindow.h"
#include "view/ViewHost.h"

void AToolSelectMove::ToolActivate() {
    m_dragMode = kIdle;
    if (Window() != nullptr) {
        Window()->InvalidateAll();
    }
}

void AToolSelectMove::ToolDeactivate() {
    AToolOutlineView::ToolDeactivate();
    if (Window() != nullptr) {
        Window()->InvalidateAll();
        Window()->viewport()->unsetCursor();
    }
}

QPoint AToolSelectMove::DragOffset() const {
    return ScreenToImage(m_dragCurrent) - ScreenToImage(m_dragStart);
}

void AToolSelectMove::OnPenDown(const PenEvent& pen) {
    const CBriselDoc* doc = Document();
    const CDibImage* mask = doc ? doc->GetFloatMask() : nullptr;
    if (mask == nullptr || Host() == nullptr || m_dragMode != kIdle) {
        return;
    }
    if (m_handleDrag.Begin(*this, pen.point)) {
        m_dragMode = kHandle;
        StopOutlineTimer();
        return;
    }
    const QPoint image = ScreenToImage(pen.point);
    if (!mask->GetBit(image.x() - doc->FloatX(), image.y() - doc->FloatY())) {
        return;
    }
    m_dragMode = kMoving;
    StopOutlineTimer();
    // The outline stands still at its place and then follows the pen.
    m_dragStart = pen.point;
    m_dragCurrent = pen.point;
    m_shownOffset = QPoint();
    m_dragOutline.Sync(*this, mask, doc->FloatX(), doc->FloatY(), true);
    Window()->UpdateNow();
}

void AToolSelectMove::OnPenMove(const PenEvent& pen) {
    if (m_dragMode == kHandle) {
        m_handleDrag.MoveAndShow(*this, pen);
        return;
    }
    if (m_dragMode != kMoving) {
        return;
    }
    m_dragCurrent = pen.point;
    const QPoint offset = DragOffset();
    if (offset == m_shownOffset) {
        return;
    }
    const CBriselDoc* doc = Document();
    m_dragOutline.Invalidate(*this);
    m_dragOutline.Sync(*this, doc->GetFloatMask(), doc->FloatX() + offset.x(), doc->FloatY() + offset.y(),
                       true);
    m_shownOffset = offset;
    Window()->UpdateNow();
}

void AToolSelectMove::OnPenUp(const PenEvent& pen) {
    if (m_dragMode == kHandle) {
        m_handleDrag.MoveAndShow(*this, pen);
        m_handleDrag.Finish(*this, true);
        m_dragMode = kIdle;
        RestartOutlineIfSelected();
        return;
    }
    if (m_dragMode != kMoving) {
        return;
    }
    m_dragOutline.Invalidate(*this);
    m_dragOutline.Clear();
    if (m_dragStart != m_dragCurrent) {
        const QPoint offset = DragOffset();
        CommandContext context = Host()->EditingContext();
        MoveSelectionOutline(context, offset.x(), offset.y());
        Window()->InvalidateAll();
    }
    m_dragMode = kIdle;
    RestartOutlineIfSelected();
    Window()->UpdateNow();
}

bool AToolSelectMove::OnKeyDown(int key) {
    if (m_dragMode == kIdle && FloatingHandleDrag::PutDownOnEnter(*this, key)) {
        return true;
    }
    if (key == Qt::Key_Escape && m_dragMode == kHandle) {
        m_handleDrag.Finish(*this, false);
        // The pen-up that follows finds no drag.
        m_dragMode = kIdle;
        RestartOutlineIfSelected();
        return true;
    }
    return CBriselView::OnKeyDown(key);
}

void AToolSelectMove::OnPointerHover(QPoint client) {
    if (m_dragMode == kIdle) {
        FloatingHandleDrag::ShowHoverCursor(*this, client, m_hoverHandle);
    }
}

void AToolSelectMove::PaintOverlay(QPainter& painter) {
    if (m_dragMode == kHandle) {
        m_handleDrag.PaintPreview(*this, painter);
        return;
    }
    AToolOutlineView::PaintOverlay(painter);
    if (m_dragMode == kMoving) {
        m_dragOutline.Paint(painter);
    } else {
        FloatingHandleDrag::PaintHandles(*this, painter);
    }
}
