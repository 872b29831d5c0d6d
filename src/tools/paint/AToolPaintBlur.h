#pragma once

#include "tools/paint/AToolPaintStroke.h"
#include "paint/FilterBrush.h"

// Blur (blur = 1) and Sharpen (blur = 0): the Blur Small or Sharpen Small rule
// under the pen, against the picture as it was at pen-down.
class AToolPaintBlur : public AToolPaintStroke {
public:
    explicit AToolPaintBlur(int blur) : m_blur(blur) {}
    int Blur() const { return m_blur; }

protected:
    bool BeginStroke(BrushEngine& engine) override;
    void PaintDab(BrushEngine& engine, int x, int y, int size) override;
    void PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size) override;
    void EndStroke() override { m_brush.End(); }

private:
    int m_blur;
    FilterBrush m_brush;
};
