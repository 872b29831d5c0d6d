#pragma once

#include "tools/paint/AToolPaintStroke.h"

// The pen (ink of the foreground colour) and the eraser (the same pen with
// the background colour), solid strokes of the palette's pen.
class AToolPaintPen : public AToolPaintStroke {
public:
    explicit AToolPaintPen(bool eraser = false) : m_eraser(eraser) {}
    bool IsEraser() const { return m_eraser; }

protected:
    bool BeginStroke(BrushEngine& engine) override;
    void PaintDab(BrushEngine& engine, int x, int y, int size) override;
    void PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size) override;

private:
    int DrawMode() const;

    bool m_eraser;
    // Replace only colours near the foreground colour by the background one.
    // Cleared at every pen-down, so the eraser always paints plain background
    // whatever "Eraser Type" says; the similarity is read all the same.
    bool m_foregroundOnly = false;
};
