#include "paint/DabCells.h"

#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "paint/BrushEngine.h"

#include <algorithm>

namespace {
constexpr ColorWord kInk = 0x000000;
constexpr ColorWord kPaper = 0xFFFFFF;
} // namespace

// A pen dab in black on a white scratch picture one pixel wider than the pen
// on every side; the black runs are the cells.
int DabCells::Build(int size, int shape) {
    size = std::clamp(size, 1, BrushEngine::kMaxPenSize);
    const int side = size + 2;
    BitmapInfoHeader header;
    InitDibHeader(header, side, side, 24, 72, 72);
    CDibImage scratch;
    if (!scratch.Create(&header, nullptr)) {
        m_count = 0;
        return 0;
    }
    scratch.Clear(kPaper);
    BrushEngine engine;
    engine.SetTargetImage(&scratch);
    engine.SetForegroundColor(kInk);
    const int centre = size / 2 + 1;
    engine.Dab(centre, centre, size, shape, kModeSolid);

    m_count = 0;
    for (int y = 0; y < side && m_count < kMaxRows; ++y) {
        int left = side;
        int right = -1;
        for (int x = 0; x < side; ++x) {
            if (scratch.GetPixel(x, y) == kInk) {
                left = std::min(left, x);
                right = x;
            }
        }
        if (right >= 0) {
            m_runs[m_count++] = Run{y - centre, left - centre, right - centre};
        }
    }
    m_size = size;
    m_shape = shape;
    return 1;
}

int DabCells::CellCount() const {
    int cells = 0;
    for (int i = 0; i < m_count; ++i) {
        cells += m_runs[i].right - m_runs[i].left + 1;
    }
    return cells;
}
