#pragma once

#include "tools/AToolOutlineView.h"
#include "tools/select/FloatingHandleDrag.h"

#include <QPoint>

// "Move Picture": dragging pans the view so that the grabbed picture pixel
// stays under the pen. The selection outline rests while the pen is down.
// A floating selection shows its handles here too (as in the selection
// tools): a press on one scales or turns it instead; Enter puts it down.
class AToolPaintMove : public AToolOutlineView {
public:
    void OnPenDown(const PenEvent& pen) override;
    void OnPenMove(const PenEvent& pen) override;
    void OnPenUp(const PenEvent& pen) override;
    bool OnKeyDown(int key) override;
    void OnPointerHover(QPoint client) override;
    void PaintOverlay(QPainter& painter) override;
    void ToolActivate() override;
    void ToolDeactivate() override;

protected:
    bool PreviewActive() const override { return m_handleDrag.Active(); }

private:
    bool Inside(QPoint point) const;

    bool m_dragging = false;
    QPoint m_grabbed;
    bool m_outlineWasEnabled = false;
    FloatingHandleDrag m_handleDrag;
    int m_hoverHandle = -1;
};
