#pragma once

#include "tools/paint/AToolPaintDrag.h"

// "Draw Line": a straight segment of the palette's pen from where the pen went
// down to where it lifts, its end kept inside the picture. With Shift held the
// line snaps to 0, 45 or 90 degrees.
class AToolPaintLine : public AToolPaintDrag {
public:
    explicit AToolPaintLine(int lineMode = 1) : m_lineMode(lineMode) {}
    int LineMode() const { return m_lineMode; }

protected:
    QPoint EndFor(QPoint point, Qt::KeyboardModifiers modifiers) const override;
    void DrawBand(QPainter& painter) const override;
    ImageRect BandArea() const override;
    void Finish() override;

private:
    int m_lineMode;
};
