#include "tools/paint/AToolPaintTablet.h"

#include "paint/ArtisticPen.h"
#include "paint/BrushEngine.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

bool AToolPaintTablet::ReadsReference(int kind) {
    // Speckle (the oil pen) blends over the target alone.
    return kind != kOil;
}

bool AToolPaintTablet::BeginStroke(BrushEngine& engine) {
    if (!IsArtisticPenKind(m_kind)) {
        return false;
    }
    if (ReadsReference(m_kind)) {
        if (!m_reference.TakeCopy(*Target())) {
            platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
            return false;
        }
        engine.SetReferenceImage(m_reference.Image());
    }
    return true;
}

void AToolPaintTablet::PaintDab(BrushEngine& engine, int x, int y, int size) {
    PaintArtisticSegment(engine, m_kind, x, y, x, y, size, PenShape());
}

void AToolPaintTablet::PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size) {
    PaintArtisticSegment(engine, m_kind, x1, y1, x2, y2, size, PenShape());
}

void AToolPaintTablet::EndStroke() {
    Engine().SetReferenceImage(nullptr);
    m_reference.Release();
}
