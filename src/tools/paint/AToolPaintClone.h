#pragma once

#include "paint/CloneStamp.h"
#include "tools/paint/AToolPaintStroke.h"

#include <optional>

// Clone Stamp: Ctrl+click sets the source point, marked by a crosshair; each
// stroke then copies the picture from (pen point - offset) through the pen
// (CloneStamp holds the offset rules). While a stroke runs the crosshair
// follows the pen at the offset. A stroke before any source point beeps.
class AToolPaintClone : public AToolPaintStroke {
public:
    void OnPenDown(const PenEvent& pen) override;
    void OnPenMove(const PenEvent& pen) override;
    void OnPenUp(const PenEvent& pen) override;
    void PaintOverlay(QPainter& painter) override;

    const CloneStamp& Stamp() const { return m_stamp; }
    // The picture pixel the crosshair marks, while there is a source.
    std::optional<QPoint> Crosshair() const;

    // Half the crosshair's length in screen pixels, at every zoom.
    static constexpr int kCrosshairReach = 8;

protected:
    bool BeginStroke(BrushEngine& engine) override;
    void PaintDab(BrushEngine& engine, int x, int y, int size) override;
    void PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size) override;
    void EndStroke() override;
    // Copying must cover what the pen covers, however fast it moves.
    bool UsesPressure() const override { return false; }
    bool PreviewActive() const override { return m_stamp.HasSource(); }

private:
    void MoveCrosshair(QPoint picturePoint);
    void InvalidateCrosshair();

    CloneStamp m_stamp;
    QPoint m_crosshair;
    QPoint m_penDown; // picture pixel of the latest pen-down
    bool m_aligned = true;
};
