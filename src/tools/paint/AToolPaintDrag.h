#pragma once

#include "image/DibTypes.h"
#include "tools/AToolOutlineView.h"

#include <QPoint>

class BrushEngine;

// The base of the tools that paint once, at pen-up, what a drag spans: the
// line, the rectangle and ellipse, and the gradient. While the pen is down a
// rubber band follows it, drawn inverted over the rendered picture; moving on
// repaints the area the old band covered from the picture, so nothing of it
// stays behind.
//
// Points are pixels of the editing target (the floating pixels while a
// selection floats, else the picture).
class AToolPaintDrag : public AToolOutlineView {
public:
    void OnPenDown(const PenEvent& pen) override;
    void OnPenMove(const PenEvent& pen) override;
    void OnPenUp(const PenEvent& pen) override;
    void ToolActivate() override;
    void ToolDeactivate() override;
    // Esc drops the drag under way without painting.
    bool OnKeyDown(int key) override;
    void PaintOverlay(QPainter& painter) override;

    bool Dragging() const { return m_dragging; }
    QPoint Start() const { return m_start; }
    QPoint End() const { return m_end; }

protected:
    bool PreviewActive() const override { return m_dragging; }

    // ---- hooks -------------------------------------------------------------
    // Whether a drag may start at `point`. Default: inside the target, with a
    // beep outside.
    virtual bool AcceptsStart(QPoint point);
    // The end point to use for the pen at `point` (clamping, snapping).
    virtual QPoint EndFor(QPoint point, Qt::KeyboardModifiers modifiers) const;
    // The band for the current drag, drawn with an inverting pen.
    virtual void DrawBand(QPainter& painter) const = 0;
    // The target pixels the band covers (inclusive), for repainting.
    virtual ImageRect BandArea() const = 0;
    // The drag has ended at End(): change the picture.
    virtual void Finish() = 0;

    // ---- services ------------------------------------------------------------
    // Opens the undo step (message 32 when it cannot be taken) and points the
    // brush engine at the target with the current colours and the palette's
    // pen, its oval table built. False when nothing may be drawn.
    bool BeginEdit(BrushEngine*& engine);
    int PenSize() const { return m_penSize; }
    int PenShape() const { return m_penShape; }
    // Client point of the middle of target pixel `point`.
    QPoint ScreenOf(QPoint point) const;
    // Marks target pixels left..right, top..bottom for repainting.
    void InvalidateTarget(int left, int top, int right, int bottom);
    // Marks the document modified and lets the window follow.
    void Modified();
    static void Beep();

private:
    void InvalidateBand();

    bool m_dragging = false;
    QPoint m_start;
    QPoint m_end;
    int m_penSize = 1;
    int m_penShape = 1;
};
