#pragma once

#include "selection/MagicWand.h"

struct CommandContext;

// Rectangle and ellipse selections as the selection tools make them at pen-up,
// in image coordinates (inclusive corners, any order). New: the current
// selection is stamped and a floating selection of the rectangle is created
// (an ellipse gets an empty mask with the filled ellipse drawn into it). Add
// and subtract: the current selection goes into the work mask, the shape is
// filled into it white or black and a new floating selection is lifted. Each
// opens an undo step of kind 5. Returns 1 when a selection exists afterwards.
int SelectRectangle(CommandContext& context, int x0, int y0, int x1, int y1, WandCombine combine);
int SelectEllipse(CommandContext& context, int x0, int y0, int x1, int y1, WandCombine combine);
