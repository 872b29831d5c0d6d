#pragma once

#include "image/DibTypes.h"
#include "view/PenEvent.h"
#include "view/ViewState.h"

#include <QPoint>
#include <QRect>

class CBriselDoc;
class CViewWindow;
class ViewHost;
class QPainter;
class QRegion;

// The behaviour of the one view window. The window stays for the whole run;
// the object bound to it is replaced on every tool change, and every tool is a
// class derived from this one. The base view owns the zoom, the mapping between
// client (device pixel) and image coordinates, the scroll sizes and the outline
// timer; its own pen handlers do nothing.
class CBriselView {
public:
    // Edge flags of ImageToScreen: reach the last screen pixel of an image pixel.
    static constexpr int kEdgeX = 1;
    static constexpr int kEdgeY = 2;

    CBriselView() = default;
    virtual ~CBriselView() = default;
    CBriselView(const CBriselView&) = delete;
    CBriselView& operator=(const CBriselView&) = delete;

    void Attach(CViewWindow* window, CBriselDoc* doc, ViewHost* host);
    CViewWindow* Window() const { return m_window; }
    CBriselDoc* Document() const { return m_doc; }
    ViewHost* Host() const { return m_host; }
    ViewState& State() { return m_state; }
    const ViewState& State() const { return m_state; }
    int Zoom() const { return m_state.zoom; }

    // Tool life cycle around a switch.
    virtual void ToolActivate() {}
    virtual void ToolDeactivate() {}
    virtual void ToolResume() { m_state.outlineEnabled = true; }
    virtual void ToolSuspend() { m_state.outlineEnabled = false; }

    // Pen events; a double click arrives as a second pen-down.
    virtual void OnPenDown(const PenEvent&) {}
    virtual void OnPenMove(const PenEvent&) {}
    virtual void OnPenUp(const PenEvent&) {}
    // The mouse moved with no button down (client point); tools may change
    // the pointer's shape.
    virtual void OnPointerHover(QPoint) {}
    // Arrow keys scroll one line; true when the key was used.
    virtual bool OnKeyDown(int key);
    // One tick of the outline timer and the rebuild of the selection outline
    // for the visible area; drawn by AToolOutlineView, the base of the tools.
    virtual void OnOutlineTick() {}
    virtual void RefreshOutline() {}
    // Tools draw previews (rubber bands, outlines) over the rendered picture.
    virtual void PaintOverlay(QPainter&) {}
    // True when the overlay alone repaints every pixel of `dirty` (client
    // coordinates), so the picture need not be rendered under it: the outline
    // animation repaints only its own pixels.
    virtual bool OverlayCovers(const QRegion&) { return false; }

    // Coordinate mapping.
    QPoint ScreenToImage(QPoint screen) const;
    QPoint ScreenToFloating(QPoint screen) const;
    QPoint ImageToScreen(QPoint image, int edgeFlags = 0) const;
    // Screen rectangle covering every screen pixel of image pixels l..r, t..b.
    QRect ImageRectToScreen(int left, int top, int right, int bottom) const;
    void InvalidateImageRect(int left, int top, int right, int bottom);
    void InvalidateSelection();

    // Zoom commands.
    void ZoomInStep(bool redraw);
    void ZoomOutStep(bool redraw);
    void ZoomActual();
    void ZoomMagnify(int n);
    void ZoomReduce(int n);
    // The largest zoom at which the whole picture fits the window.
    void ZoomToFit();
    // Fits a picture larger than the window; one that fits stays at actual size.
    void FitIfLarger();
    // Shows the picture alone on the whole screen until a tap or Esc.
    void FullScreen();

    // Outline timer (id 1, 200 ms).
    void StartOutlineTimer();
    void StopOutlineTimer();
    void EnableOutline() { m_state.outlineEnabled = true; }
    void DisableOutline() { m_state.outlineEnabled = false; }
    void OnTimerTick();

    // Document notifications.
    void OnInitialUpdate();
    void OnUpdate(int hint);

    // Scrolling.
    void SetScrollSizes();
    void RecomputeLayout();
    void OnScrolled();
    void ScrollToPosition(int x, int y);
    void ScrollBy(int dx, int dy);
    // Screen rectangle the picture occupies: origin and visible size.
    QRect ImageScreenArea() const;
    // The image rectangle to draw for a dirty client rectangle, and where its
    // top-left lands on screen; false when nothing of the picture is dirty.
    bool DirtyImageArea(const QRect& dirty, ImageRect& area, QPoint& screenTopLeft) const;

private:
    void AfterZoomChange(bool redraw);
    void ReadImageSize();
    void UpdateFirstVisible();
    void ShowCaptionSuffix();

    CViewWindow* m_window = nullptr;
    CBriselDoc* m_doc = nullptr;
    ViewHost* m_host = nullptr;
    ViewState m_state;
};
