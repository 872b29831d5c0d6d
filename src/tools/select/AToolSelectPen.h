#pragma once

#include "paint/BrushEngine.h"
#include "tools/select/AToolSelect.h"

// "Select Pen": strokes of the current pen paint the selection into the work
// mask (white; black when subtracting with Ctrl), with its outline shown as it
// grows; on release the painted area becomes the floating selection.
class AToolSelectPen : public AToolSelect {
protected:
    void BeginShape(const PenEvent& pen, QPoint image) override;
    void ContinueShape(const PenEvent& pen, QPoint image) override;
    void FinishShape(const PenEvent& pen, QPoint image) override;
    bool OutlineShown() const override;

private:
    void RepaintPainted(int x0, int y0, int x1, int y1);

    BrushEngine m_engine;
    bool m_painting = false;
    QPoint m_lastPoint;
    int m_penSize = 1;
    int m_penShape = kShapeRect;
    // Everything painted since the pen went down, (32767, 32767, -1, -1) when nothing.
    QRect m_changed;
};
