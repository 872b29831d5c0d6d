#pragma once

#include "tools/paint/AToolPaintDrag.h"

// "Gradient Tool": the drag from start to end point fills the whole picture
// (or the floating pixels) with a ramp from the foreground to the background
// colour, in the colour mode and shape of the "Gradient" settings. A line
// shows the drag while the pen is down; a drag of no length changes nothing.
class AToolPaintGradient : public AToolPaintDrag {
public:
    void ToolActivate() override;
    int ColorMode() const { return m_colorMode; }
    int Shape() const { return m_shape; }

protected:
    bool AcceptsStart(QPoint point) override;
    void DrawBand(QPainter& painter) const override;
    ImageRect BandArea() const override;
    void Finish() override;

private:
    void ReadOptions();

    int m_colorMode = 0;
    int m_shape = 0;
};
