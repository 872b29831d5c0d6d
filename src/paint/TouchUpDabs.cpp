#include "paint/TouchUpDabs.h"

#include "image/CDibImage.h"
#include "paint/BrushEngine.h"
#include "paint/DabCells.h"

#include <cstring>

namespace {

// The part of a run that lies inside the picture on row y, as picture columns;
// false when none does.
bool ClipRun(const CDibImage& image, const DabCells::Run& run, int x, int y, int& left, int& right) {
    if (y < 0 || y >= image.Height()) {
        return false;
    }
    left = std::max(x + run.left, 0);
    right = std::min(x + run.right, image.Width() - 1);
    return left <= right;
}

} // namespace

void CopyDabFrom(const CDibImage& source, CDibImage& target, const DabCells& cells, int x, int y) {
    if (target.BitsPerPixel() != 24 || source.BitsPerPixel() != 24 || source.Width() != target.Width() ||
        source.Height() != target.Height()) {
        return;
    }
    for (int i = 0; i < cells.RunCount(); ++i) {
        const DabCells::Run& run = cells.RunAt(i);
        int left = 0;
        int right = 0;
        if (ClipRun(target, run, x, y + run.dy, left, right)) {
            std::memcpy(target.RowData(y + run.dy) + 3 * left, source.RowData(y + run.dy) + 3 * left,
                        3 * static_cast<std::size_t>(right - left + 1));
        }
    }
}

void SmudgeDab(CDibImage& target, const DabCells& cells, int fromX, int fromY, int toX, int toY, int strength,
               std::uint8_t* work) {
    if (target.BitsPerPixel() != 24) {
        return;
    }
    const int width = target.Width();
    const int height = target.Height();
    const auto inside = [&](int px, int py) { return px >= 0 && px < width && py >= 0 && py < height; };
    // Read every dragged pixel first: the two dabs usually overlap.
    std::uint8_t* cell = work;
    for (int i = 0; i < cells.RunCount(); ++i) {
        const DabCells::Run& run = cells.RunAt(i);
        for (int dx = run.left; dx <= run.right; ++dx, cell += 3) {
            if (inside(fromX + dx, fromY + run.dy)) {
                std::memcpy(cell, target.RowData(fromY + run.dy) + 3 * (fromX + dx), 3);
            }
        }
    }
    cell = work;
    for (int i = 0; i < cells.RunCount(); ++i) {
        const DabCells::Run& run = cells.RunAt(i);
        for (int dx = run.left; dx <= run.right; ++dx, cell += 3) {
            if (!inside(fromX + dx, fromY + run.dy) || !inside(toX + dx, toY + run.dy)) {
                continue;
            }
            std::uint8_t* under = target.RowData(toY + run.dy) + 3 * (toX + dx);
            for (int c = 0; c < 3; ++c) {
                under[c] =
                    static_cast<std::uint8_t>((strength * cell[c] + (256 - strength) * under[c] + 128) >> 8);
            }
        }
    }
}

void SprayAlong(BrushEngine& engine, int x1, int y1, int x2, int y2, int step) {
    WalkSegment(x1, y1, x2, y2, step, [&](int x, int y) { engine.SprayAt(x, y); });
}
