#pragma once

#include "tools/AToolOutlineView.h"

// "Flood Fill": a tap fills the 4-connected area around the tapped pixel
// whose colours lie within "FloodFill"/"Tolerance" of its colour, per
// channel, with the foreground colour; one undo step.
class AToolPaintFill : public AToolOutlineView {
public:
    void ToolActivate() override;
    void ToolDeactivate() override;
    void OnPenDown(const PenEvent& pen) override;
};
