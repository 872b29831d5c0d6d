#include "view/MarchingOutline.h"

#include "image/CDibImage.h"
#include "view/CBriselView.h"
#include "view/CViewWindow.h"
#include "view/ClientRegion.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPolygon>
#include <cstdlib>
#include <vector>

MarchingOutline::Source MarchingOutline::Describe(const CBriselView& view, const CDibImage* mask, int x,
                                                  int y) {
    const ViewState& s = view.State();
    const CViewWindow* window = view.Window();
    Source source;
    source.mask = mask;
    source.x = x;
    source.y = y;
    source.width = mask ? mask->Width() : 0;
    source.height = mask ? mask->Height() : 0;
    // One image pixel (or reduced block) more than fits, for the partly
    // shown pixel at the right and bottom edges.
    const int extra = std::abs(s.zoom) + 1;
    source.viewport = OutlineViewport{s.firstVisibleX,
                                      s.firstVisibleY,
                                      s.visibleImageWidth + extra,
                                      s.visibleImageHeight + extra,
                                      s.zoom,
                                      window ? window->ScrollX() : 0,
                                      window ? window->ScrollY() : 0,
                                      s.originX,
                                      s.originY};
    return source;
}

bool MarchingOutline::Same(const Source& a, const Source& b) {
    const OutlineViewport& u = a.viewport;
    const OutlineViewport& v = b.viewport;
    return a.mask == b.mask && a.x == b.x && a.y == b.y && a.width == b.width && a.height == b.height &&
           u.firstX == v.firstX && u.firstY == v.firstY && u.visibleWidth == v.visibleWidth &&
           u.visibleHeight == v.visibleHeight && u.zoom == v.zoom && u.scrollX == v.scrollX &&
           u.scrollY == v.scrollY && u.originX == v.originX && u.originY == v.originY;
}

bool MarchingOutline::Sync(const CBriselView& view, const CDibImage* mask, int x, int y, bool force) {
    const Source source = Describe(view, mask, x, y);
    if (!force && m_built && Same(source, m_source)) {
        return false;
    }
    m_source = source;
    m_built = true;
    m_lastTick = QRegion();
    m_outline.Build(mask, x, y, source.viewport);
    // The first draw after a rebuild is a full one: every outline pixel is
    // repainted (over the picture, which takes the old outline away there).
    std::vector<QPoint> pixels;
    m_outline.Draw([&pixels](int px, int py, bool) { pixels.emplace_back(px, py); });
    if (view.Window() != nullptr) {
        InvalidateClientRegion(*view.Window(), PixelRegion(pixels));
    }
    return true;
}

void MarchingOutline::Clear() {
    m_outline.Clear();
    m_built = false;
    m_lastTick = QRegion();
}

void MarchingOutline::Tick(CBriselView& view) {
    m_outline.Tick();
    std::vector<QPoint> changed;
    m_outline.Draw([&changed](int x, int y, bool) { changed.emplace_back(x, y); });
    m_lastTick = PixelRegion(changed);
    if (view.Window() != nullptr) {
        InvalidateClientRegion(*view.Window(), m_lastTick);
    }
}

void MarchingOutline::Invalidate(CBriselView& view) const {
    if (view.Window() == nullptr || m_outline.IsEmpty()) {
        return;
    }
    std::vector<QPoint> pixels;
    m_outline.ForEachPixel([&pixels](int x, int y) { pixels.emplace_back(x, y); });
    InvalidateClientRegion(*view.Window(), PixelRegion(pixels));
}

void MarchingOutline::Paint(QPainter& painter) const {
    if (m_outline.IsEmpty()) {
        return;
    }
    QPolygon white;
    QPolygon black;
    const int phase = m_outline.Phase();
    // A pixel turns white when its value reaches 0 and black when it reaches
    // 4 (the only changes a tick makes), so between ticks it is white for the
    // values 5, 6, 7 and 0.
    // Only the pixels inside the area being repainted are drawn (a tick's
    // repaint covers a few of them).
    const QPaintEngine* engine = painter.paintEngine();
    // The clip is kept in the coordinates of the device (the window's backing store).
    const QRect deviceDirty = engine != nullptr ? engine->systemClip().boundingRect() : QRect();
    const QRect dirty = painter.deviceTransform().inverted().mapRect(deviceDirty).adjusted(-1, -1, 1, 1);
    const bool everywhere = deviceDirty.isEmpty();
    m_outline.ForEachPixel([&](int x, int y) {
        if (everywhere || dirty.contains(x, y)) {
            (((phase + x + y + 3) & 7) < 4 ? white : black).append(QPoint(x, y));
        }
    });
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(Qt::white, 0));
    painter.drawPoints(white);
    painter.setPen(QPen(Qt::black, 0));
    painter.drawPoints(black);
    painter.restore();
}

bool MarchingOutline::Covers(const QRegion& dirty) const {
    return !m_lastTick.isEmpty() && dirty.subtracted(m_lastTick).isEmpty();
}
