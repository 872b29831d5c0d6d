#pragma once

#include "image/DibTypes.h"

#include <QIcon>
#include <functional>

// The program's icons, painted at start so that they stay sharp at any size.
class QPainter;

namespace icons {

// An icon drawn by `draw` on a 32 x 32 canvas, at 1x and 2x.
QIcon Paint(const std::function<void(QPainter&)>& draw);

QIcon ForTool(int toolId);
// The tool's icon with a small corner mark: the button holds a group.
QIcon ForGroupMember(int toolId);
QIcon ToolOptions();
QIcon Application();
// A swatch of `color` (0x00BBGGRR); `current` draws a frame around it.
QIcon ColorSwatch(ColorWord color, bool current);
// The pen: its shape (1 Rect .. 6 BSlash) at its size (1..32).
QIcon PenShape(int shape, int size);

} // namespace icons
