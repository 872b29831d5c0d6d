#include "tools/paint/AToolPaintPen.h"

#include "paint/BrushEngine.h"
#include "platform/Settings.h"

bool AToolPaintPen::BeginStroke(BrushEngine& engine) {
    m_foregroundOnly = false;
    const int similarity = platform::Settings::ReadInt("Eraser", "Red", 32);
    if (!m_eraser) {
        return true;
    }
    if (m_foregroundOnly) {
        engine.SetColorMatchBounds(similarity, similarity, similarity);
    } else {
        engine.SetForegroundColor(engine.Background());
    }
    return true;
}

int AToolPaintPen::DrawMode() const {
    return m_eraser && m_foregroundOnly ? kModeColorReplace : kModeSolid;
}

void AToolPaintPen::PaintDab(BrushEngine& engine, int x, int y, int size) {
    engine.Dab(x, y, size, PenShape(), DrawMode());
}

void AToolPaintPen::PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size) {
    engine.Segment(x1, y1, x2, y2, size, PenShape(), DrawMode());
}
