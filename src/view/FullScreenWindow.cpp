#include "view/FullScreenWindow.h"

#include "image/CBriselDoc.h"
#include "view/CDisplayRenderer.h"

#include <QEventLoop>
#include <QKeyEvent>
#include <QPainter>
#include <QTabletEvent>
#include <cmath>

FullScreenWindow::FullScreenWindow(CDisplayRenderer& renderer, const CBriselDoc* doc)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint), m_renderer(renderer), m_doc(doc) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::BlankCursor);
    setWindowTitle(QStringLiteral("Tamrick"));
}

int FullScreenWindow::FitReduction(int width, int height, int screenWidth, int screenHeight) {
    if (width <= screenWidth && height <= screenHeight) {
        return 1;
    }
    const int byWidth = width / screenWidth + 1;
    const int byHeight = height / screenHeight + 1;
    return byWidth > byHeight ? byWidth : byHeight;
}

void FullScreenWindow::RunModal() {
    QEventLoop loop;
    connect(this, &FullScreenWindow::Closed, &loop, &QEventLoop::quit);
    showFullScreen();
    activateWindow();
    grabMouse();
    grabKeyboard();
    if (!m_closed) {
        loop.exec();
    }
    releaseKeyboard();
    releaseMouse();
    hide();
}

void FullScreenWindow::Finish() {
    m_closed = true;
    emit Closed();
}

void FullScreenWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const qreal ratio = devicePixelRatioF();
    painter.scale(1.0 / ratio, 1.0 / ratio);
    const int screenWidth = static_cast<int>(std::lround(width() * ratio));
    const int screenHeight = static_cast<int>(std::lround(height() * ratio));
    const QColor background(0x20, 0x20, 0x24);
    const CDibImage* picture = m_doc ? m_doc->GetPicture() : nullptr;
    if (picture == nullptr || screenWidth <= 0 || screenHeight <= 0) {
        painter.fillRect(0, 0, screenWidth, screenHeight, background);
        return;
    }
    const int k = FitReduction(picture->Width(), picture->Height(), screenWidth, screenHeight);
    const int shownWidth = picture->Width() / k;
    const int shownHeight = picture->Height() / k;
    if (shownWidth < screenWidth || shownHeight < screenHeight) {
        painter.fillRect(0, 0, screenWidth, screenHeight, background);
    }
    m_renderer.SetZoom(k == 1 ? 1 : -k);
    if (m_renderer.Bind(*m_doc)) {
        const ImageRect area{0, 0, picture->Width() - 1, picture->Height() - 1};
        m_renderer.Render(painter, area,
                          QPoint((screenWidth - shownWidth) / 2, (screenHeight - shownHeight) / 2));
    }
    m_renderer.Release();
}

void FullScreenWindow::mousePressEvent(QMouseEvent*) {
    Finish();
}

void FullScreenWindow::tabletEvent(QTabletEvent* event) {
    if (event->type() == QEvent::TabletPress) {
        Finish();
    }
    event->accept();
}

void FullScreenWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        Finish();
    }
}
