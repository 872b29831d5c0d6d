#pragma once

#include "image/DibTypes.h"
#include "paint/PenStroke.h"
#include "tools/AToolOutlineView.h"

#include <QPoint>

class BrushEngine;
class CDibImage;

// The base of every tool that paints a stroke with the pen: pen, eraser,
// touch-up brushes and artistic pens. It runs the stroke and leaves only the
// painting to the subclass.
//
// Pen-down inside the editing target (the floating pixels while a selection
// floats, else the picture):
//   1. the engine (the host's one BrushEngine) gets the target, the current
//      foreground and background colours, and the subclass's BeginStroke();
//   2. one undo step (kind 1) is opened; when it cannot be, message 32 is shown
//      and the stroke does not start (unless PaintsWithoutUndo()). The step
//      saves the pixels around each dab and segment (the pen's reach) just
//      before they are painted; when it can no longer (a command closed it,
//      or memory ran out) the stroke stops painting;
//   3. PaintDab() at the point; the pen width comes from the pressure state.
// Each pen-move calls PaintSegment() from the last sample to the new one,
// possibly several times (simulated pressure thins a fast stroke); only the
// touched area is repainted. Pen-up calls EndStroke() and marks the document
// modified. A pen-down outside the target does nothing.
//
// Width: with a tablet, pressure p (0..1) gives quarter + round((size -
// quarter) * p), quarter = max(1, size / 4), for the whole stroke instead of
// the simulation. With the mouse, "Pen Pressure Simulation" thins fast strokes
// (PressureMove in PenStroke.h) when the subclass's UsesPressure() says so.
//
// All coordinates given to the hooks are pixels of the target image. Before
// every hook call with a size, oval pens have the engine's oval table built
// for that size.
class AToolPaintStroke : public AToolOutlineView {
public:
    void OnPenDown(const PenEvent& pen) override;
    void OnPenMove(const PenEvent& pen) override;
    void OnPenUp(const PenEvent& pen) override;
    void ToolActivate() override;
    void ToolDeactivate() override;

    bool Drawing() const { return m_drawing; }
    // Width a tablet pressure of 0..1 gives a pen of `penSize`.
    static int PressureSize(int penSize, double pressure);

protected:
    // ---- hooks -------------------------------------------------------------
    // Called at pen-down with the engine already pointed at the target and
    // given the current colours; set modes, reference copies, colours here.
    // Return false to refuse the stroke (nothing is recorded or painted).
    virtual bool BeginStroke(BrushEngine& engine);
    // The first dab at pen-down. Default: a solid dab of the pen shape.
    virtual void PaintDab(BrushEngine& engine, int x, int y, int size);
    // One segment of the stroke. Default: a solid segment of the pen shape.
    virtual void PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size);
    // After the last segment, before the document is marked modified; also
    // when a stroke that BeginStroke() accepted could not start.
    virtual void EndStroke() {}
    // Whether the mouse's simulated pressure applies to this tool.
    virtual bool UsesPressure() const { return true; }
    // Whether a stroke goes on without undo when the snapshot fails (the
    // message is shown either way).
    virtual bool PaintsWithoutUndo() const { return false; }
    // Pixels a dab may reach beyond the pen's own cells (for repainting).
    virtual int ExtraReach() const { return 0; }
    // Whether a pen-down outside the target beeps (the pen stays silent).
    virtual bool BeepsOutside() const { return false; }

    // ---- services ------------------------------------------------------------
    BrushEngine& Engine();
    CDibImage* Target() const;
    int PenSize() const { return m_penSize; }
    int PenShape() const { return m_penShape; }
    // The width of the latest dab or segment.
    int CurrentSize() const { return m_currentSize; }
    // Last pen sample in target pixels.
    QPoint LastSample() const { return m_last; }
    bool StrokeFromTablet() const { return m_fromTablet; }
    // A client point in target pixels.
    QPoint ToTarget(QPoint screen) const;
    bool InsideTarget(QPoint point) const;
    // Repaints target pixels left..right, top..bottom grown by the pen's reach.
    void InvalidateAround(int left, int top, int right, int bottom);
    // Before painting outside PaintDab/PaintSegment (a timer's spray): lets
    // the undo step save target pixels left..right, top..bottom grown by the
    // pen's reach. False when the stroke must not paint any more.
    bool SaveBeforePainting(int left, int top, int right, int bottom);
    // Builds the oval table for `size` when the pen is oval.
    void PrepareShape(int size);

private:
    void PaintMove(QPoint to, const PenEvent& pen);
    int Reach() const;

    bool m_drawing = false;
    bool m_recording = false; // the stroke's undo step is open
    bool m_stopped = false;   // painting stopped before pen-up
    bool m_fromTablet = false;
    int m_penSize = 1;
    int m_penShape = 1;
    int m_currentSize = 1;
    QPoint m_last;
    // The image the stroke paints; a stroke stops when the document's target
    // changes under it (a command ran while the pen was down).
    const CDibImage* m_target = nullptr;
    // Picture pixel of target pixel (0, 0).
    QPoint m_targetOrigin;
    PressureState m_pressure;
};
