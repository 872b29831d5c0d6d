#include "view/ClientRegion.h"

#include "view/CViewWindow.h"

#include <QRect>
#include <algorithm>

void InvalidateClientRegion(CViewWindow& window, const QRegion& region) {
    if (region.isEmpty()) {
        return;
    }
    if (window.DeviceRatio() == 1.0) {
        window.viewport()->update(region);
        return;
    }
    for (const QRect& rect : region) {
        window.InvalidateClient(rect);
    }
}

QRegion PixelRegion(std::vector<QPoint>& pixels) {
    std::sort(pixels.begin(), pixels.end(),
              [](QPoint a, QPoint b) { return a.y() != b.y() ? a.y() < b.y() : a.x() < b.x(); });
    pixels.erase(std::unique(pixels.begin(), pixels.end()), pixels.end());
    // One rectangle per run of neighbouring pixels in a row: rows one pixel
    // tall are the region's y-bands, the runs in each are x-sorted.
    std::vector<QRect> runs;
    for (std::size_t i = 0; i < pixels.size();) {
        std::size_t end = i + 1;
        while (end < pixels.size() && pixels[end].y() == pixels[i].y() &&
               pixels[end].x() == pixels[end - 1].x() + 1) {
            ++end;
        }
        runs.emplace_back(pixels[i], pixels[end - 1]);
        i = end;
    }
    QRegion region;
    region.setRects(runs.data(), static_cast<int>(runs.size()));
    return region;
}
