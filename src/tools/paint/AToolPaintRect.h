#pragma once

#include "tools/paint/AToolPaintDrag.h"

// "Draw Rectangle" and "Draw Ellipse": the shape spanned by the drag, in one
// of three styles (0 outline of the pen size in the foreground colour, 1 the
// same with the inside in the background colour, 2 filled with the foreground
// colour), optionally drawn from its centre. With Shift held it is a square
// or a circle.
class AToolPaintRect : public AToolPaintDrag {
public:
    explicit AToolPaintRect(int ellipse = 0) : m_ellipse(ellipse != 0) {}

    bool IsEllipse() const { return m_ellipse; }
    // The settings section of the tool's options: "PaintRect" or "PaintOval".
    static const char* Section(bool ellipse) { return ellipse ? "PaintOval" : "PaintRect"; }
    void SetOptions(int drawStyle, bool fromCentre);
    int DrawStyle() const { return m_drawStyle; }
    bool FromCentre() const { return m_fromCentre; }
    void ToolActivate() override;

protected:
    bool AcceptsStart(QPoint point) override;
    QPoint EndFor(QPoint point, Qt::KeyboardModifiers modifiers) const override;
    void DrawBand(QPainter& painter) const override;
    ImageRect BandArea() const override;
    void Finish() override;

private:
    void ReadOptions();
    // The corner opposite End(): the start, or its mirror image about the
    // start when drawing from the centre.
    QPoint FirstCorner() const;

    bool m_ellipse;
    int m_drawStyle = 0;
    bool m_fromCentre = false;
};
