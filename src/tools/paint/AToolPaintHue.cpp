#include "tools/paint/AToolPaintHue.h"

#include "dialogs/HueOptionsDialog.h"
#include "paint/BrushEngine.h"

bool AToolPaintHue::BeginStroke(BrushEngine& engine) {
    const ColorWord color = engine.Foreground();
    engine.ComputeForegroundHue(RedOf(color), GreenOf(color), BlueOf(color));
    m_mode = HueOptionsDialog::ReadUseColor() ? kModeHueSaturation : kModeHue;
    return true;
}

void AToolPaintHue::PaintDab(BrushEngine& engine, int x, int y, int size) {
    engine.Dab(x, y, size, PenShape(), m_mode);
}

void AToolPaintHue::PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size) {
    engine.Segment(x1, y1, x2, y2, size, PenShape(), m_mode);
}
