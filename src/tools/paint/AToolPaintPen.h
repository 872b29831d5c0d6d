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
    // The eraser with "Eraser Type" 1 ("Erase foreground color only"), read
    // at every pen-down: it replaces only colours within the "Red" similarity
    // of the foreground colour (draw mode 6) by the background colour.
    bool m_foregroundOnly = false;
};
