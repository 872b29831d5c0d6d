#pragma once

#include "tools/AToolOutlineView.h"
#include "tools/select/FloatingHandleDrag.h"

#include <QPoint>

// "Move Selection": dragging on the selection carries its outline to another
// place; on release the selection there is made of the pixels found under
// it, after the floating pixels were stamped where they were (one undo step
// of kind 8). Presses beside the selection do nothing. A floating selection
// also shows its handles here, which scale and turn it as in the other
// selection tools (AToolSelect); Enter puts it down.
class AToolSelectMove : public AToolOutlineView {
public:
    void ToolActivate() override;
    void ToolDeactivate() override;
    void OnPenDown(const PenEvent& pen) override;
    void OnPenMove(const PenEvent& pen) override;
    void OnPenUp(const PenEvent& pen) override;
    bool OnKeyDown(int key) override;
    void OnPointerHover(QPoint client) override;
    void PaintOverlay(QPainter& painter) override;

    bool Dragging() const { return m_dragMode == kMoving; }

protected:
    bool PreviewActive() const override { return m_dragMode != kIdle; }

private:
    enum { kIdle = 0, kMoving = 4, kHandle = 6 };
    QPoint DragOffset() const;

    int m_dragMode = kIdle;
    QPoint m_dragStart;
    QPoint m_dragCurrent;
    QPoint m_shownOffset;
    MarchingOutline m_dragOutline;
    FloatingHandleDrag m_handleDrag;
    int m_hoverHandle = -1;
};
