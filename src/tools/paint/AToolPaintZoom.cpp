#include "tools/paint/AToolPaintZoom.h"

#include "tools/paint/AToolPaintCursor.h"
#include "view/CViewWindow.h"

void AToolPaintZoom::ToolActivate() {
    paintcursor::Show(*this, Qt::CrossCursor);
}

void AToolPaintZoom::ToolDeactivate() {
    AToolOutlineView::ToolDeactivate();
    paintcursor::Clear(*this);
}

void AToolPaintZoom::OnPenDown(const PenEvent& pen) {
    if (Window() == nullptr) {
        return;
    }
    const QPoint point = ScreenToImage(pen.point);
    const ViewState& state = State();
    if (point.x() < 0 || point.y() < 0 || point.x() >= state.imageWidth || point.y() >= state.imageHeight) {
        return;
    }
    const int before = Zoom();
    if (m_zoomOut) {
        ZoomOutStep(false);
    } else {
        ZoomInStep(false);
    }
    const int z = Zoom();
    if (z == before) {
        return;
    }
    const QSize client = Window()->ClientSize();
    const int w = client.width();
    const int h = client.height();
    if (z >= 1) {
        ScrollToPosition(z * (point.x() - (w / z) / 2), z * (point.y() - (h / z) / 2));
    } else {
        const int k = -z;
        ScrollToPosition((point.x() - (k * w) / 2) / k, (point.y() - (k * h) / 2) / k);
    }
    Window()->InvalidateAll();
    Window()->UpdateNow();
    RefreshOutline();
}
