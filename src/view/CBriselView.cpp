#include "view/CBriselView.h"

#include "image/CBriselDoc.h"
#include "image/ImageCoordinates.h"
#include "view/CViewWindow.h"
#include "view/FullScreenWindow.h"
#include "view/ViewHost.h"
#include "view/ZoomRules.h"

#include <algorithm>
#include <cstdlib>

void CBriselView::Attach(CViewWindow* window, CBriselDoc* doc, ViewHost* host) {
    m_window = window;
    m_doc = doc;
    m_host = host;
}

// ---- coordinate mapping -------------------------------------------------

QPoint CBriselView::ScreenToImage(QPoint screen) const {
    const int sx = m_window ? m_window->ScrollX() : 0;
    const int sy = m_window ? m_window->ScrollY() : 0;
    // Every tool's points come through here: they are kept within the
    // coordinate limit the engines rely on.
    return {ClampCoordinate(zoom::ScreenOffsetToImage(sx - m_state.originX + screen.x(), m_state.zoom)),
            ClampCoordinate(zoom::ScreenOffsetToImage(sy - m_state.originY + screen.y(), m_state.zoom))};
}

QPoint CBriselView::ScreenToFloating(QPoint screen) const {
    const QPoint image = ScreenToImage(screen);
    if (m_doc == nullptr) {
        return image;
    }
    return {image.x() - m_doc->FloatX(), image.y() - m_doc->FloatY()};
}

QPoint CBriselView::ImageToScreen(QPoint image, int edgeFlags) const {
    const int sx = m_window ? m_window->ScrollX() : 0;
    const int sy = m_window ? m_window->ScrollY() : 0;
    const int z = m_state.zoom;
    if (z >= 1) {
        int x = z * image.x() - sx + m_state.originX;
        int y = z * image.y() - sy + m_state.originY;
        if (edgeFlags & kEdgeX) {
            x += z - 1;
        }
        if (edgeFlags & kEdgeY) {
            y += z - 1;
        }
        return {x, y};
    }
    return {m_state.originX + image.x() / -z - sx, m_state.originY + image.y() / -z - sy};
}

QRect CBriselView::ImageRectToScreen(int left, int top, int right, int bottom) const {
    return QRect(ImageToScreen({left, top}, 0), ImageToScreen({right, bottom}, kEdgeX | kEdgeY));
}

void CBriselView::InvalidateImageRect(int left, int top, int right, int bottom) {
    if (m_window == nullptr) {
        return;
    }
    m_window->InvalidateClient(ImageRectToScreen(left, top, right, bottom));
    m_window->UpdateNow();
}

void CBriselView::InvalidateSelection() {
    if (m_window == nullptr || m_doc == nullptr) {
        return;
    }
    const ImageRect box = m_doc->GetFloatRect();
    if (box == ImageRect{}) {
        return;
    }
    const int z = m_state.zoom;
    const int grow = std::abs(z);
    QRect r = ImageRectToScreen(box.left, box.top, box.right, box.bottom).adjusted(-grow, -grow, grow, grow);
    if (z > 1) {
        const int ox = m_state.originX;
        const int oy = m_state.originY;
        r.setLeft(ox + ((r.left() - ox) / z) * z);
        r.setTop(oy + ((r.top() - oy) / z) * z);
        r.setRight(ox + ((r.right() - ox) / z + 1) * z);
        r.setBottom(oy + ((r.bottom() - oy) / z + 1) * z);
    }
    m_window->InvalidateClient(r);
}

// ---- zoom ------------------------------------------------------------------

void CBriselView::ZoomInStep(bool redraw) {
    if (zoom::StepIn(m_state.zoom, m_state.imageWidth, m_state.imageHeight)) {
        AfterZoomChange(redraw);
    }
}

void CBriselView::ZoomOutStep(bool redraw) {
    if (zoom::StepOut(m_state.zoom, m_state.imageWidth, m_state.imageHeight)) {
        AfterZoomChange(redraw);
    }
}

void CBriselView::ZoomActual() {
    m_state.zoom = 1;
    AfterZoomChange(true);
}

void CBriselView::ZoomMagnify(int n) {
    m_state.zoom = zoom::CodeBelow(n);
    ZoomInStep(true);
}

void CBriselView::ZoomReduce(int n) {
    m_state.zoom = -(n - 1);
    ZoomOutStep(true);
}

void CBriselView::ZoomToFit() {
    if (m_window == nullptr || m_state.imageWidth <= 0 || m_state.imageHeight <= 0) {
        return;
    }
    const QSize room = m_window->ClientSizeWithoutBars();
    m_state.zoom = zoom::FitCode(m_state.imageWidth, m_state.imageHeight, room.width(), room.height());
    AfterZoomChange(true);
}

void CBriselView::FitIfLarger() {
    // A window not on screen yet has no size to fit to.
    if (m_window == nullptr || !m_window->isVisible()) {
        return;
    }
    const QSize room = m_window->ClientSizeWithoutBars();
    if (m_state.imageWidth > room.width() || m_state.imageHeight > room.height()) {
        ZoomToFit();
    }
}

void CBriselView::FullScreen() {
    if (m_host == nullptr) {
        return;
    }
    FullScreenWindow screen(m_host->Renderer(), m_doc);
    screen.RunModal();
}

void CBriselView::AfterZoomChange(bool redraw) {
    SetScrollSizes();
    if (redraw && m_window != nullptr) {
        m_window->InvalidateAll();
        m_window->UpdateNow();
    }
    ShowCaptionSuffix();
    RefreshOutline();
}

void CBriselView::ShowCaptionSuffix() {
    if (m_host != nullptr) {
        m_host->ShowZoomSuffix(zoom::CaptionSuffix(m_state.zoom));
    }
}

// ---- outline timer -----------------------------------------------------------

void CBriselView::StartOutlineTimer() {
    if (!m_state.outlineTimerOn && m_window != nullptr) {
        m_window->StartOutlineTimer();
    }
    m_state.outlineTimerOn = true;
    RefreshOutline();
}

void CBriselView::StopOutlineTimer() {
    if (m_window != nullptr) {
        m_window->StopOutlineTimer();
    }
    m_state.outlineTimerOn = false;
}

void CBriselView::OnTimerTick() {
    if (m_state.outlineTimerOn) {
        OnOutlineTick();
    }
}

// ---- document notifications ----------------------------------------------------

void CBriselView::ReadImageSize() {
    const CDibImage* picture = m_doc ? m_doc->GetPicture() : nullptr;
    m_state.imageWidth = picture ? picture->Width() : 0;
    m_state.imageHeight = picture ? picture->Height() : 0;
}

void CBriselView::OnInitialUpdate() {
    m_state.zoom = 1;
    StopOutlineTimer();
    ReadImageSize();
    SetScrollSizes();
    if (m_window != nullptr) {
        m_window->SetScrollPosition(0, 0);
        m_window->InvalidateAll();
    }
    UpdateFirstVisible();
    RecomputeLayout();
    ShowCaptionSuffix();
}

void CBriselView::OnUpdate(int hint) {
    if (hint == 1) {
        ReadImageSize();
        m_state.centreOffsetX = m_state.centreOffsetY = 0;
        m_state.originX = m_state.originY = 0;
        m_state.firstVisibleX = m_state.firstVisibleY = 0;
        SetScrollSizes();
    }
    if (m_window != nullptr) {
        m_window->InvalidateAll();
    }
}

// ---- scrolling and layout -------------------------------------------------------

void CBriselView::SetScrollSizes() {
    const int margin = m_state.marginOn ? 16 : 0;
    const zoom::Size size = zoom::ZoomedSize(m_state.imageWidth, m_state.imageHeight, m_state.zoom);
    m_state.totalWidth = size.width + margin;
    m_state.totalHeight = size.height + margin;
    m_state.pageX = m_state.totalWidth / 5;
    m_state.pageY = m_state.totalHeight / 5;
    m_state.lineX = m_state.totalWidth / 20;
    m_state.lineY = m_state.totalHeight / 20;
    if (m_window != nullptr) {
        m_window->SetScrollTotals(m_state.totalWidth, m_state.totalHeight);
        const int x = m_window->HasHorizontalBar() ? zoom::SnapToGrid(m_window->ScrollX(), m_state.zoom) : 0;
        const int y = m_window->HasVerticalBar() ? zoom::SnapToGrid(m_window->ScrollY(), m_state.zoom) : 0;
        m_window->SetScrollPosition(x, y);
    }
    UpdateFirstVisible();
    RecomputeLayout();
}

void CBriselView::UpdateFirstVisible() {
    const int sx = m_window ? m_window->ScrollX() : 0;
    const int sy = m_window ? m_window->ScrollY() : 0;
    m_state.firstVisibleX = zoom::ScreenOffsetToImage(sx, m_state.zoom);
    m_state.firstVisibleY = zoom::ScreenOffsetToImage(sy, m_state.zoom);
    m_state.lastPointX = -1;
    m_state.lastPointY = -1;
}

void CBriselView::RecomputeLayout() {
    const QSize client = m_window ? m_window->ClientSize() : QSize(0, 0);
    ViewState& s = m_state;
    s.visibleWidth = client.width();
    s.centreOffsetX = 0;
    if (client.width() > s.totalWidth) {
        s.centreOffsetX = (client.width() - s.totalWidth) / 2;
        s.visibleWidth = s.totalWidth;
    }
    s.visibleHeight = client.height();
    s.centreOffsetY = 0;
    if (client.height() > s.totalHeight) {
        s.centreOffsetY = (client.height() - s.totalHeight) / 2;
        s.visibleHeight = s.totalHeight;
    }
    s.originX = s.centreOffsetX;
    s.originY = s.centreOffsetY;
    if (s.marginOn) {
        s.originX += 16;
        s.originY += 16;
        s.visibleWidth -= 16;
        s.visibleHeight -= 16;
    }
    s.visibleImageWidth = client.width() < s.totalWidth
                              ? ScreenToImage({client.width(), 0}).x() - ScreenToImage({s.originX, 0}).x()
                              : s.imageWidth;
    s.visibleImageHeight = client.height() < s.totalHeight
                               ? ScreenToImage({0, client.height()}).y() - ScreenToImage({0, s.originY}).y()
                               : s.imageHeight;
}

void CBriselView::OnScrolled() {
    UpdateFirstVisible();
    RecomputeLayout();
}

void CBriselView::ScrollToPosition(int x, int y) {
    if (m_window == nullptr) {
        return;
    }
    auto clampAxis = [this](int target, bool hasBar, int maximum) {
        if (!hasBar || target < 0) {
            return 0;
        }
        if (target > maximum) {
            return m_state.zoom > 1 ? (maximum / m_state.zoom) * m_state.zoom : maximum;
        }
        return target;
    };
    m_window->SetScrollPosition(clampAxis(x, m_window->HasHorizontalBar(), m_window->MaxScrollX()),
                                clampAxis(y, m_window->HasVerticalBar(), m_window->MaxScrollY()));
    OnScrolled();
    m_window->InvalidateAll();
}

void CBriselView::ScrollBy(int dx, int dy) {
    if (m_window == nullptr) {
        return;
    }
    const int x = zoom::SnapToGrid(m_window->ScrollX() + dx, m_state.zoom);
    const int y = zoom::SnapToGrid(m_window->ScrollY() + dy, m_state.zoom);
    ScrollToPosition(x, y);
}

bool CBriselView::OnKeyDown(int key) {
    if (m_window == nullptr) {
        return false;
    }
    const bool vertical = m_window->HasVerticalBar();
    const bool horizontal = m_window->HasHorizontalBar();
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down: {
        const int sign = key == Qt::Key_Up ? -1 : 1;
        if (vertical) {
            ScrollBy(0, sign * m_state.lineY);
        } else if (horizontal) {
            // Without a vertical bar Up and Down move sideways.
            ScrollBy(sign * m_state.lineX, 0);
        }
        return true;
    }
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (horizontal) {
            ScrollBy(key == Qt::Key_Left ? -m_state.lineX : m_state.lineX, 0);
        }
        return true;
    default:
        return false;
    }
}

QRect CBriselView::ImageScreenArea() const {
    return QRect(m_state.originX, m_state.originY, m_state.visibleWidth, m_state.visibleHeight);
}

bool CBriselView::DirtyImageArea(const QRect& dirty, ImageRect& area, QPoint& screenTopLeft) const {
    const QRect clipped = dirty.intersected(ImageScreenArea());
    if (clipped.isEmpty() || m_state.imageWidth <= 0 || m_state.imageHeight <= 0) {
        return false;
    }
    const QPoint topLeft = ScreenToImage(clipped.topLeft());
    QPoint bottomRight = ScreenToImage(clipped.bottomRight());
    if (m_state.zoom < 0) {
        // A reduced screen pixel stands for a whole block of image pixels.
        bottomRight += QPoint(-m_state.zoom - 1, -m_state.zoom - 1);
    }
    area.left = std::max(topLeft.x(), 0);
    area.top = std::max(topLeft.y(), 0);
    // The picture may have been replaced before the view heard of it.
    const CDibImage* picture = m_doc ? m_doc->GetPicture() : nullptr;
    const int width = picture ? std::min(picture->Width(), m_state.imageWidth) : 0;
    const int height = picture ? std::min(picture->Height(), m_state.imageHeight) : 0;
    area.right = std::min(bottomRight.x(), width - 1);
    area.bottom = std::min(bottomRight.y(), height - 1);
    if (area.right < area.left || area.bottom < area.top) {
        return false;
    }
    screenTopLeft = ImageToScreen({area.left, area.top}, 0);
    return true;
}
