#pragma once

#include "image/CommandContext.h"
#include "selection/MagicWand.h"
#include "tools/AToolOutlineView.h"
#include "tools/select/FloatingHandleDrag.h"

#include <QPoint>
#include <QRect>

// The base of the selection tools (and of the text tool). It classifies every
// pen press, drags the floating selection when the press lands on it, and
// shows the selection's animated dotted outline (AToolOutlineView); everything else a press
// starts is left to the derived tool through the shape hooks below.
//
// Press classification (the drag mode):
//   Shift held   -> kAdd       (add the shape to the selection)
//   Ctrl held    -> kSubtract  (remove the shape from the selection)
//   otherwise, on a selected pixel of the floating selection -> kMoveFloating
//   otherwise    -> kNew       (the shape replaces the selection)
// Alt is left free for the tools' square and circle constraint.
//
// Handles: while a selection floats, its box shows eight size handles and a
// rotation handle (FloatingHandles); a press on one (without Ctrl) is a
// kHandle drag, handled here by FloatingHandleDrag: a live preview, then one
// transform on release. Esc cancels the drag; Enter puts the selection down.
//
// kMoveFloating is handled here: the floating pixels follow the pen on screen
// (no picture pixel changes while dragging) and on release the selection
// moves by the dragged distance in image pixels, as one undo step of kind 3.
//
// Hooks for derived tools, called for the modes kNew, kAdd and kSubtract only:
//   AcceptsPress   - whether a press at this image point does anything at all
//                    (default: everywhere, also beside the picture);
//   BeginShape     - pen down; the drag mode is already set;
//   ContinueShape  - each pen move while the pen is down;
//   FinishShape    - pen up; the drag mode returns to kIdle afterwards;
//   CancelShape    - Esc while the pen is down: take the preview away and
//                    return true, or false when the shape cannot be taken back
//                    (default), in which case the drag goes on.
// A tool that draws a preview overrides PaintOverlay and calls this class's
// PaintOverlay first. CancelDrag() turns a running drag into kCancelled, which
// the pen-up ignores.
class AToolSelect : public AToolOutlineView {
public:
    enum DragMode {
        kIdle = 0,
        kNew = 1,
        kAdd = 2,
        kSubtract = 3,
        kMoveFloating = 4,
        kCancelled = 5,
        kHandle = 6
    };

    void ToolActivate() override;
    // The handles come and go with the tool.
    void ToolDeactivate() override;
    void OnPenDown(const PenEvent& pen) override;
    void OnPenMove(const PenEvent& pen) override;
    void OnPenUp(const PenEvent& pen) override;
    // Esc cancels a drag that can be taken back, Enter puts a floating
    // selection down; other keys scroll.
    bool OnKeyDown(int key) override;
    void OnPointerHover(QPoint client) override;
    void PaintOverlay(QPainter& painter) override;
    const FloatingHandleDrag& HandleDrag() const { return m_handleDrag; }

    int DragMode() const { return m_dragMode; }
    // The drag mode a press at `image` with `modifiers` gets.
    int ClassifyPress(QPoint image, Qt::KeyboardModifiers modifiers) const;
    // kNew, kAdd, kSubtract as the engines name them.
    static WandCombine CombineOf(int dragMode);

protected:
    virtual bool AcceptsPress(QPoint) const { return true; }
    virtual void BeginShape(const PenEvent&, QPoint) {}
    virtual void ContinueShape(const PenEvent&, QPoint) {}
    virtual void FinishShape(const PenEvent&, QPoint) {}
    virtual bool CancelShape() { return false; }
    // Whether the floating selection's handles are offered (the selection
    // tools; not the text tool, whose floating text is placed as it is).
    virtual bool OffersHandles() const { return true; }

    void CancelDrag() { m_dragMode = kCancelled; }
    CommandContext Context();
    // The outline is drawn while the timer runs, and kept still while a shape
    // is being added to or subtracted from the selection.
    bool OutlineShown() const override;
    bool PreviewActive() const override { return m_dragMode != kIdle; }

    // Drag points in client coordinates.
    QPoint m_dragStart;
    QPoint m_dragCurrent;
    // Cleared on activation.
    int m_combineMode = 0;
    int m_spare1 = 0;
    int m_spare2 = 0;

private:
    void BeginFloatingDrag(const PenEvent& pen);
    void ContinueFloatingDrag(const PenEvent& pen);
    void EndFloatingDrag();
    void CancelFloatingDrag();
    QPoint FloatingDragOffset() const;
    // Screen rectangle of the floating selection at its place and displaced
    // by `offset`, clipped to the picture's screen area.
    QRect FloatingDragArea(QPoint offset) const;
    void PaintFloatingDrag(QPainter& painter);

    int m_dragMode = kIdle;
    FloatingHandleDrag m_handleDrag;
    int m_hoverHandle = -1;
    QPoint m_shownOffset;
};
