#pragma once

#include "tools/paint/AToolPaintStroke.h"
#include "paint/BrushEngine.h"

#include <QTimer>

// Air Brush: sprays the foreground colour through the engine's spray mask
// (the first base) of the pen's size and shape, at pen-down, along every move
// and, on a timer, while the pen rests, so paint builds up where the pen
// stays. Along a move the sprays lie a quarter of the pen size apart, so the
// trail is even. The colour pen shares the spraying with its own mask and no
// timer.
class AToolPaintSpray : public AToolPaintStroke {
public:
    static constexpr int kSprayPeriodMs = 50;

    AToolPaintSpray();
    void ToolResume() override;
    void ToolSuspend() override;

    bool SprayTimerActive() const { return m_timer.isActive(); }
    // One timer tick: a spray at the last pen sample.
    void OnSprayTick();

protected:
    void PaintDab(BrushEngine& engine, int x, int y, int size) override;
    void PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size) override;
    void EndStroke() override;

    virtual void BuildMask(BrushEngine& engine, int size) { engine.BuildAirBrushMask(size, PenShape()); }
    virtual bool SpraysWhileResting() const { return true; }

private:
    bool PrepareMask(BrushEngine& engine, int size);

    QTimer m_timer;
    int m_maskSize = 0;
};
