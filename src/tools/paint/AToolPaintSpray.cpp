#include "tools/paint/AToolPaintSpray.h"

#include "paint/BrushEngine.h"
#include "paint/TouchUpDabs.h"

#include <algorithm>

AToolPaintSpray::AToolPaintSpray() {
    m_timer.setInterval(kSprayPeriodMs);
    m_timer.callOnTimeout([this] { OnSprayTick(); });
}

void AToolPaintSpray::ToolResume() {
    AToolPaintStroke::ToolResume();
    if (Drawing() && SpraysWhileResting()) {
        m_timer.start();
    }
}

void AToolPaintSpray::ToolSuspend() {
    AToolPaintStroke::ToolSuspend();
    m_timer.stop();
}

// The mask is built per stroke and again whenever pressure changes the width;
// a width the pressure has brought down to nothing sprays nothing.
bool AToolPaintSpray::PrepareMask(BrushEngine& engine, int size) {
    if (size < 1) {
        return false;
    }
    if (size != m_maskSize) {
        BuildMask(engine, std::min(size, BrushEngine::kSprayCells));
        m_maskSize = size;
    }
    return true;
}

void AToolPaintSpray::PaintDab(BrushEngine& engine, int x, int y, int size) {
    m_maskSize = 0;
    if (PrepareMask(engine, size)) {
        engine.SprayAt(x, y);
    }
    if (SpraysWhileResting()) {
        m_timer.start();
    }
}

void AToolPaintSpray::PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size) {
    if (PrepareMask(engine, size)) {
        SprayAlong(engine, x1, y1, x2, y2, std::max(1, size / 4));
    }
}

void AToolPaintSpray::OnSprayTick() {
    BrushEngine& engine = Engine();
    if (!Drawing() || engine.TargetImage() != Target()) {
        m_timer.stop();
        return;
    }
    const QPoint at = LastSample();
    if (!SaveBeforePainting(at.x(), at.y(), at.x(), at.y())) {
        m_timer.stop();
        return;
    }
    if (PrepareMask(engine, CurrentSize())) {
        engine.SprayAt(at.x(), at.y());
        InvalidateAround(at.x(), at.y(), at.x(), at.y());
    }
}

void AToolPaintSpray::EndStroke() {
    m_timer.stop();
}
