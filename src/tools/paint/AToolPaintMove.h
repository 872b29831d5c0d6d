#pragma once

#include "tools/AToolOutlineView.h"

#include <QPoint>

// "Move Picture": dragging pans the view so that the grabbed picture pixel
// stays under the pen. The selection outline rests while the pen is down.
class AToolPaintMove : public AToolOutlineView {
public:
    void OnPenDown(const PenEvent& pen) override;
    void OnPenMove(const PenEvent& pen) override;
    void OnPenUp(const PenEvent& pen) override;
    void ToolActivate() override;
    void ToolDeactivate() override;

private:
    bool Inside(QPoint point) const;

    bool m_dragging = false;
    QPoint m_grabbed;
    bool m_outlineWasEnabled = false;
};
