#pragma once

#include "tools/paint/AToolPaintStroke.h"

// Hue: the pixels under the pen take the foreground colour's hue and keep
// their value; with "PaintHue"/"UseColor" set they also take its saturation.
// A grey foreground has no hue and leaves the picture as it is.
class AToolPaintHue : public AToolPaintStroke {
public:
    int Mode() const { return m_mode; }

protected:
    bool BeginStroke(BrushEngine& engine) override;
    void PaintDab(BrushEngine& engine, int x, int y, int size) override;
    void PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size) override;

private:
    int m_mode = 4;
};
