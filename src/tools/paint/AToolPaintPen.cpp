#include "tools/paint/AToolPaintPen.h"

#include "paint/BrushEngine.h"
#include "platform/Settings.h"

bool AToolPaintPen::BeginStroke(BrushEngine& engine) {
    m_foregroundOnly = m_eraser && platform::Settings::ReadInt("Eraser", "Eraser Type", 0) == 1;
    if (!m_eraser) {
        return true;
    }
    if (m_foregroundOnly) {
        // The engine keeps both colours: pixels within the similarity of the
        // foreground colour in each channel become the background colour.
        const int similarity = platform::Settings::ReadInt("Eraser", "Red", 32);
        engine.SetColorMatchBounds(similarity, similarity, similarity);
    } else {
        engine.SetForegroundColor(engine.Background());
    }
    return true;
}

int AToolPaintPen::DrawMode() const {
    return m_foregroundOnly ? kModeColorReplace : kModeSolid;
}

void AToolPaintPen::PaintDab(BrushEngine& engine, int x, int y, int size) {
    engine.Dab(x, y, size, PenShape(), DrawMode());
}

void AToolPaintPen::PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size) {
    engine.Segment(x1, y1, x2, y2, size, PenShape(), DrawMode());
}
