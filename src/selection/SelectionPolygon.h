#pragma once

#include "selection/MagicWand.h"
#include "selection/SelectionOutline.h"

#include <memory>
#include <vector>

struct CommandContext;
class CDibImage;

// The free-hand selection: the closed polygon through the pen's path.

// A one-bit mask of the box (left, top)..(right, bottom), inclusive, holding
// the closed polygon through `points` (image coordinates) filled by the
// even-odd rule, its edges included. Null when the memory cannot be had.
std::unique_ptr<CDibImage> RasterizePolygon(const std::vector<OutlineEntry>& points, int left, int top,
                                            int right, int bottom);

// The free-hand selection at pen-up: opens an undo step of kind 5 and stamps
// the current selection; a path of more than one point then becomes the new
// selection (clipped to the picture), or is OR-ed into or cleared from the
// current one. Without memory for the polygon, "Memory is not enough !..." is
// shown and nothing changes. Returns 1 when a selection exists afterwards.
int SelectPolygon(CommandContext& context, const std::vector<OutlineEntry>& points, WandCombine combine);
