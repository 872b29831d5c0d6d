#pragma once

#include "image/CommandContext.h"

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>

class CBriselView;
class QPainter;
struct PenEvent;

// A drag on one of the floating selection's handles (FloatingHandles): while
// it runs, the view shows the floating pixels scaled or turned as they will
// be (a fast preview drawn by the painter from a copy taken at pen-down, over
// the picture rendered without them); on release the floating selection is
// transformed once by the Image menu's own Rescale or Rotate
// (FloatingTransform), one undo step. Shift keeps a corner drag's proportions
// and snaps the angle to 15 degrees.
class FloatingHandleDrag {
public:
    // The screen rectangle the floating pixels cover, or an empty one.
    static QRect ScreenBox(const CBriselView& view);
    // The handles of the view's floating selection, over everything else.
    static void PaintHandles(const CBriselView& view, QPainter& painter);
    // The handle under a client point, or FloatingHandles::kNone.
    static int HandleAt(const CBriselView& view, QPoint client);

    // Starts a drag when `client` is on a handle; false otherwise.
    bool Begin(const CBriselView& view, QPoint client);
    void Move(const CBriselView& view, QPoint client, Qt::KeyboardModifiers modifiers);
    // Transforms the floating selection as the drag shows; 1 when it changed.
    int Release(CommandContext& context);
    void Cancel();

    bool Active() const { return m_handle >= 0; }
    int Handle() const { return m_handle; }
    bool Rotating() const;
    // The result the drag shows now: the picture rectangle of a scaling drag,
    // the clockwise degrees of a turning one.
    QRect TargetBox() const { return m_target; }
    int Degrees() const { return m_degrees; }
    // "W x H pixels" or "N degrees", for the status bar.
    QString StatusText() const;

    void PaintPreview(const CBriselView& view, QPainter& painter) const;

    // The steps a tool takes, on the view's window and host: a pen move
    // (status text, live repaint), the end of the drag (applied on release,
    // dropped on Esc), Enter (the selection is put down and ends), and the
    // pointer's shape over a handle (`shown` remembers the last one).
    void MoveAndShow(CBriselView& view, const PenEvent& pen);
    void Finish(CBriselView& view, bool apply);
    // Enter or Return while a selection floats puts it down; true when the
    // key was one of them and a selection was put down.
    static bool PutDownOnEnter(CBriselView& view, int key);
    static void ShowHoverCursor(CBriselView& view, QPoint client, int& shown);

private:
    static void PutDown(CBriselView& view);
    void TakePreviewCopy(const CBriselView& view);

    int m_handle = -1;
    QPoint m_start;
    QRect m_box;    // picture rectangle at pen-down
    QRect m_target; // picture rectangle the drag gives
    int m_degrees = 0;
    QImage m_preview;
};
