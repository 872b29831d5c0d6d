#include "tools/paint/AToolPaintSmudge.h"

#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

bool AToolPaintSmudge::BeginStroke(BrushEngine&) {
    if (!m_brush.Begin()) {
        platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
        return false;
    }
    return true;
}

void AToolPaintSmudge::PaintSegment(BrushEngine&, int x1, int y1, int x2, int y2, int size) {
    m_brush.Segment(*Target(), x1, y1, x2, y2, size, PenShape());
}
