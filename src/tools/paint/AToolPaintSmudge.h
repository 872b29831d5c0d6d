#pragma once

#include "tools/paint/AToolPaintStroke.h"
#include "paint/SmudgeBrush.h"

// Smudge: drags the colours under the pen along the stroke. Putting the pen
// down changes nothing; only moving does.
class AToolPaintSmudge : public AToolPaintStroke {
protected:
    bool BeginStroke(BrushEngine& engine) override;
    void PaintDab(BrushEngine&, int, int, int) override {}
    void PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size) override;
    void EndStroke() override { m_brush.End(); }

private:
    SmudgeBrush m_brush;
};
