#pragma once

#include <QPoint>
#include <QRegion>
#include <vector>

class CViewWindow;

// Regions of client (device pixel) coordinates for the tools' overlays.

// Marks `region` for repainting; the repaint comes from the event loop.
void InvalidateClientRegion(CViewWindow& window, const QRegion& region);

// The region made of single pixels, built in one pass (sorted into rows and
// runs) rather than by a union per pixel. `pixels` is reordered.
QRegion PixelRegion(std::vector<QPoint>& pixels);
