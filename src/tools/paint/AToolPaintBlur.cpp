#include "tools/paint/AToolPaintBlur.h"

#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

bool AToolPaintBlur::BeginStroke(BrushEngine&) {
    const int rule = m_blur != 0 ? FilterBrush::kBlurSmall : FilterBrush::kSharpenSmall;
    if (!m_brush.Begin(*Target(), rule)) {
        platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
        return false;
    }
    return true;
}

void AToolPaintBlur::PaintDab(BrushEngine&, int x, int y, int size) {
    m_brush.Dab(*Target(), x, y, size, PenShape());
}

void AToolPaintBlur::PaintSegment(BrushEngine&, int x1, int y1, int x2, int y2, int size) {
    m_brush.Segment(*Target(), x1, y1, x2, y2, size, PenShape());
}
