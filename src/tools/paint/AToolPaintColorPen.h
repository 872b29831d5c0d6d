#pragma once

#include "tools/paint/AToolPaintSpray.h"

// Color Pen: the spray mask with the second, stronger base, laid down only
// while the pen moves: a pen with a soft edge.
class AToolPaintColorPen : public AToolPaintSpray {
protected:
    void BuildMask(BrushEngine& engine, int size) override { engine.BuildColorPenMask(size, PenShape()); }
    bool SpraysWhileResting() const override { return false; }
};
