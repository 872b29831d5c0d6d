#pragma once

#include "paint/AToolPaintSpray.h"

// Color Pen: the spray mask with the second, stronger base, laid down closely
// along the path and only while the pen moves: a pen with a soft edge.
class AToolPaintColorPen : public AToolPaintSpray {
protected:
    void BuildMask(BrushEngine& engine, int size) override { engine.BuildColorPenMask(size, PenShape()); }
    int Spacing(int size) const override;
    bool SpraysWhileResting() const override { return false; }
};
