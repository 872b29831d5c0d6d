#include "view/CViewWindow.h"

#include "image/CBriselDoc.h"
#include "view/CBriselView.h"
#include "view/CDisplayRenderer.h"
#include "view/ViewHost.h"
#include "view/ZoomRules.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTabletEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace {
QRect ToDeviceRect(const QRect& logical, qreal ratio) {
    const int left = static_cast<int>(std::floor(logical.left() * ratio));
    const int top = static_cast<int>(std::floor(logical.top() * ratio));
    const int right = static_cast<int>(std::ceil((logical.right() + 1) * ratio));
    const int bottom = static_cast<int>(std::ceil((logical.bottom() + 1) * ratio));
    return QRect(QPoint(left, top), QPoint(right - 1, bottom - 1));
}

QRect ToLogicalRect(const QRect& device, qreal ratio) {
    const int left = static_cast<int>(std::floor(device.left() / ratio));
    const int top = static_cast<int>(std::floor(device.top() / ratio));
    const int right = static_cast<int>(std::ceil((device.right() + 1) / ratio));
    const int bottom = static_cast<int>(std::ceil((device.bottom() + 1) / ratio));
    return QRect(QPoint(left, top), QPoint(right - 1, bottom - 1));
}
} // namespace

CViewWindow::CViewWindow(QWidget* parent)
    : QAbstractScrollArea(parent), m_view(std::make_unique<CBriselView>()) {
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    setAcceptDrops(true);
    viewport()->setAcceptDrops(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    connect(horizontalScrollBar(), &QScrollBar::actionTriggered, this,
            [this](int action) { OnScrollAction(Qt::Horizontal, action); });
    connect(verticalScrollBar(), &QScrollBar::actionTriggered, this,
            [this](int action) { OnScrollAction(Qt::Vertical, action); });
    m_view->Attach(this, nullptr, nullptr);
}

CViewWindow::~CViewWindow() = default;

std::unique_ptr<CBriselView> CViewWindow::ReplaceView(std::unique_ptr<CBriselView> view) {
    std::swap(m_view, view);
    return view;
}

qreal CViewWindow::DeviceRatio() const {
    return viewport()->devicePixelRatioF();
}

QSize CViewWindow::ClientSize() const {
    const qreal ratio = DeviceRatio();
    return QSize(static_cast<int>(std::lround(viewport()->width() * ratio)),
                 static_cast<int>(std::lround(viewport()->height() * ratio)));
}

QSize CViewWindow::ClientSizeWithoutBars() const {
    // The frame's inside holds the viewport and the scroll bars.
    const QSize room = contentsRect().size();
    const qreal ratio = DeviceRatio();
    return QSize(static_cast<int>(std::lround(room.width() * ratio)),
                 static_cast<int>(std::lround(room.height() * ratio)));
}

int CViewWindow::ScrollX() const {
    return horizontalScrollBar()->value();
}
int CViewWindow::ScrollY() const {
    return verticalScrollBar()->value();
}
int CViewWindow::MaxScrollX() const {
    return horizontalScrollBar()->maximum();
}
int CViewWindow::MaxScrollY() const {
    return verticalScrollBar()->maximum();
}
bool CViewWindow::HasHorizontalBar() const {
    return horizontalScrollBar()->maximum() > 0;
}
bool CViewWindow::HasVerticalBar() const {
    return verticalScrollBar()->maximum() > 0;
}

void CViewWindow::SetScrollTotals(int totalWidth, int totalHeight) {
    const QSize client = ClientSize();
    m_snapping = true;
    horizontalScrollBar()->setRange(0, std::max(0, totalWidth - client.width()));
    verticalScrollBar()->setRange(0, std::max(0, totalHeight - client.height()));
    horizontalScrollBar()->setPageStep(std::max(1, client.width()));
    verticalScrollBar()->setPageStep(std::max(1, client.height()));
    horizontalScrollBar()->setSingleStep(std::max(1, totalWidth / 20));
    verticalScrollBar()->setSingleStep(std::max(1, totalHeight / 20));
    m_snapping = false;
}

void CViewWindow::SetScrollPosition(int x, int y) {
    m_snapping = true;
    horizontalScrollBar()->setValue(x);
    verticalScrollBar()->setValue(y);
    m_snapping = false;
}

void CViewWindow::InvalidateClient(const QRect& rect) {
    viewport()->update(ToLogicalRect(rect.normalized(), DeviceRatio()));
}

void CViewWindow::InvalidateAll() {
    viewport()->update();
}

void CViewWindow::UpdateNow() {
    if (viewport()->isVisible()) {
        viewport()->repaint();
    }
}

void CViewWindow::StartOutlineTimer() {
    m_outlineTimer.start(kOutlinePeriodMs, this);
}
void CViewWindow::StopOutlineTimer() {
    m_outlineTimer.stop();
}

QPixmap CViewWindow::BackgroundPattern() {
    QPixmap pattern(16, 16);
    pattern.fill(QColor(0xB8, 0xB8, 0xBC));
    QPainter painter(&pattern);
    painter.fillRect(0, 0, 8, 8, QColor(0xCC, 0xCC, 0xD0));
    painter.fillRect(8, 8, 8, 8, QColor(0xCC, 0xCC, 0xD0));
    return pattern;
}

QPoint CViewWindow::ToDevice(const QPointF& logical) const {
    const qreal ratio = DeviceRatio();
    return QPoint(static_cast<int>(std::floor(logical.x() * ratio)),
                  static_cast<int>(std::floor(logical.y() * ratio)));
}

void CViewWindow::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const qreal ratio = DeviceRatio();
    painter.scale(1.0 / ratio, 1.0 / ratio);
    const QRect dirty = ToDeviceRect(event->rect(), ratio);
    m_view->RecomputeLayout();
    if (ratio == 1.0 && m_view->OverlayCovers(event->region())) {
        m_view->PaintOverlay(painter);
        return;
    }

    static const QBrush background(BackgroundPattern());
    const QRegion outside = QRegion(dirty).subtracted(QRegion(m_view->ImageScreenArea()));
    for (const QRect& strip : outside) {
        painter.fillRect(strip, background);
    }

    ImageRect area;
    QPoint topLeft;
    CBriselDoc* doc = m_view->Document();
    ViewHost* host = m_view->Host();
    if (doc != nullptr && host != nullptr && m_view->DirtyImageArea(dirty, area, topLeft)) {
        CDisplayRenderer& renderer = host->Renderer();
        renderer.SetZoom(m_view->Zoom());
        if (renderer.Bind(*doc)) {
            renderer.Render(painter, area, topLeft);
        }
        renderer.Release();
    }
    m_view->PaintOverlay(painter);
}

void CViewWindow::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    const ViewState& s = m_view->State();
    SetScrollTotals(s.totalWidth, s.totalHeight);
    const int x = std::min(zoom::SnapToGrid(ScrollX(), s.zoom), MaxScrollX());
    const int y = std::min(zoom::SnapToGrid(ScrollY(), s.zoom), MaxScrollY());
    SetScrollPosition(x, y);
    m_view->OnScrolled();
    InvalidateAll();
    m_view->RefreshOutline();
}

void CViewWindow::OnScrollAction(Qt::Orientation orientation, int action) {
    QScrollBar* bar = orientation == Qt::Horizontal ? horizontalScrollBar() : verticalScrollBar();
    const ViewState& s = m_view->State();
    const int line = orientation == Qt::Horizontal ? s.lineX : s.lineY;
    const int page = orientation == Qt::Horizontal ? s.pageX : s.pageY;
    int wanted = bar->value();
    switch (action) {
    case QAbstractSlider::SliderSingleStepAdd:
        wanted += line;
        break;
    case QAbstractSlider::SliderSingleStepSub:
        wanted -= line;
        break;
    case QAbstractSlider::SliderPageStepAdd:
        wanted += page;
        break;
    case QAbstractSlider::SliderPageStepSub:
        wanted -= page;
        break;
    case QAbstractSlider::SliderToMinimum:
        wanted = 0;
        break;
    case QAbstractSlider::SliderToMaximum:
        wanted = 32767;
        break;
    case QAbstractSlider::SliderMove:
        wanted = bar->sliderPosition();
        break;
    default:
        return;
    }
    wanted = std::clamp(wanted, 0, bar->maximum());
    bar->setSliderPosition(zoom::SnapToGrid(wanted, s.zoom));
}

void CViewWindow::scrollContentsBy(int, int) {
    if (m_snapping) {
        return;
    }
    const int zoomCode = m_view->Zoom();
    const int x = zoom::SnapToGrid(ScrollX(), zoomCode);
    const int y = zoom::SnapToGrid(ScrollY(), zoomCode);
    if (x != ScrollX() || y != ScrollY()) {
        SetScrollPosition(x, y);
    }
    m_view->OnScrolled();
    InvalidateAll();
}

void CViewWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_view->OnPenDown(PenEvent{ToDevice(event->position()), event->modifiers(), 1.0, false});
}

void CViewWindow::mouseDoubleClickEvent(QMouseEvent* event) {
    // A double tap is a second pen-down.
    mousePressEvent(event);
}

void CViewWindow::mouseMoveEvent(QMouseEvent* event) {
    const QPoint point = ToDevice(event->position());
    emit PointerMoved(m_view->ScreenToImage(point));
    // Tools hear about moves only while the pen is down, as with a real pen.
    if (event->buttons() & Qt::LeftButton) {
        m_view->OnPenMove(PenEvent{point, event->modifiers(), 1.0, false});
    } else if (event->buttons() == Qt::NoButton) {
        m_view->OnPointerHover(point);
    }
}

void CViewWindow::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        m_view->OnPenUp(PenEvent{ToDevice(event->position()), event->modifiers(), 1.0, false});
    }
}

void CViewWindow::tabletEvent(QTabletEvent* event) {
    const PenEvent pen{ToDevice(event->position()), event->modifiers(), event->pressure(), true};
    switch (event->type()) {
    case QEvent::TabletPress:
        m_tabletPenDown = true;
        m_view->OnPenDown(pen);
        break;
    case QEvent::TabletMove:
        if (m_tabletPenDown) {
            m_view->OnPenMove(pen);
        }
        break;
    case QEvent::TabletRelease:
        m_tabletPenDown = false;
        m_view->OnPenUp(pen);
        break;
    default:
        return;
    }
    event->accept();
}

void CViewWindow::keyPressEvent(QKeyEvent* event) {
    if (!m_view->OnKeyDown(event->key())) {
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void CViewWindow::ZoomAroundPointer(const QPointF& position, bool zoomIn) {
    const QPoint screen = ToDevice(position);
    const QPoint image = m_view->ScreenToImage(screen);
    if (zoomIn) {
        m_view->ZoomInStep(true);
    } else {
        m_view->ZoomOutStep(true);
    }
    const ViewState& s = m_view->State();
    const int z = s.zoom;
    auto scaled = [z](int v) { return z >= 1 ? v * z : v / -z; };
    m_view->ScrollToPosition(zoom::SnapToGrid(scaled(image.x()) + s.originX - screen.x(), z),
                             zoom::SnapToGrid(scaled(image.y()) + s.originY - screen.y(), z));
}

void CViewWindow::wheelEvent(QWheelEvent* event) {
    const int notches = event->angleDelta().y() / 120;
    if (event->modifiers() & Qt::ControlModifier) {
        if (notches != 0) {
            ZoomAroundPointer(event->position(), notches > 0);
        }
        event->accept();
        return;
    }
    const ViewState& s = m_view->State();
    const int step = std::max(std::abs(s.zoom), 1);
    const int horizontal = event->angleDelta().x() / 120;
    const int dy = -notches * std::max(s.lineY, step);
    const int dx = -horizontal * std::max(s.lineX, step);
    if (dx != 0 || dy != 0) {
        m_view->ScrollBy(dx, dy);
    }
    event->accept();
}

void CViewWindow::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_outlineTimer.timerId()) {
        m_view->OnTimerTick();
        return;
    }
    QAbstractScrollArea::timerEvent(event);
}

void CViewWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls() && event->mimeData()->urls().first().isLocalFile()) {
        event->acceptProposedAction();
    }
}

void CViewWindow::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (!urls.isEmpty() && urls.first().isLocalFile()) {
        event->acceptProposedAction();
        emit FileDropped(urls.first().toLocalFile());
    }
}
