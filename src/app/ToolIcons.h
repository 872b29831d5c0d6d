#pragma once

#include "image/DibTypes.h"

#include <QIcon>

// The program's icons, painted at start so that they stay sharp at any size.
namespace icons {

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
