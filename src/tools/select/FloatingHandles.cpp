#include "tools/select/FloatingHandles.h"

#include "image/DibTypes.h"

#include <QLineF>
#include <algorithm>
#include <cmath>

// Handles sit just outside the box, so that a press inside it still moves the
// selection however small it is on screen.
QPoint FloatingHandles::Centre(int handle) const {
    constexpr int out = kSize / 2 + 1;
    const int left = m_box.left() - out;
    const int right = m_box.right() + out;
    const int top = m_box.top() - out;
    const int bottom = m_box.bottom() + out;
    const int midX = m_box.left() + (m_box.right() - m_box.left()) / 2;
    const int midY = m_box.top() + (m_box.bottom() - m_box.top()) / 2;
    switch (handle) {
    case kTopLeft:
        return {left, top};
    case kTop:
        return {midX, top};
    case kTopRight:
        return {right, top};
    case kRight:
        return {right, midY};
    case kBottomRight:
        return {right, bottom};
    case kBottom:
        return {midX, bottom};
    case kBottomLeft:
        return {left, bottom};
    case kLeft:
        return {left, midY};
    case kRotate:
        return {midX, top - kRotateLift};
    default:
        return {};
    }
}

QRect FloatingHandles::Square(int handle) const {
    const QPoint centre = Centre(handle);
    return {centre.x() - kSize / 2, centre.y() - kSize / 2, kSize, kSize};
}

int FloatingHandles::HitTest(QPoint point) const {
    if (Square(kRotate).contains(point)) {
        return kRotate;
    }
    for (int handle = kTopLeft; handle <= kLeft; ++handle) {
        if (Square(handle).contains(point)) {
            return handle;
        }
    }
    return kNone;
}

Qt::CursorShape FloatingHandles::CursorOf(int handle) {
    switch (handle) {
    case kTopLeft:
    case kBottomRight:
        return Qt::SizeFDiagCursor;
    case kTopRight:
    case kBottomLeft:
        return Qt::SizeBDiagCursor;
    case kTop:
    case kBottom:
        return Qt::SizeVerCursor;
    case kLeft:
    case kRight:
        return Qt::SizeHorCursor;
    case kRotate:
        return Qt::OpenHandCursor;
    default:
        return Qt::ArrowCursor;
    }
}

QRect FloatingHandles::Scaled(QRect box, int handle, QPoint delta, bool proportional) {
    const bool movesLeft = handle == kTopLeft || handle == kLeft || handle == kBottomLeft;
    const bool movesRight = handle == kTopRight || handle == kRight || handle == kBottomRight;
    const bool movesTop = handle == kTopLeft || handle == kTop || handle == kTopRight;
    const bool movesBottom = handle == kBottomLeft || handle == kBottom || handle == kBottomRight;
    long long width = box.width() + (movesRight ? delta.x() : 0) - (movesLeft ? delta.x() : 0);
    long long height = box.height() + (movesBottom ? delta.y() : 0) - (movesTop ? delta.y() : 0);
    width = std::max(1LL, width);
    height = std::max(1LL, height);
    const bool corner = (movesLeft || movesRight) && (movesTop || movesBottom);
    if (proportional && corner && box.width() > 0 && box.height() > 0) {
        // The side that changed more (relative to its length) sets the scale.
        const double sx = static_cast<double>(width) / box.width();
        const double sy = static_cast<double>(height) / box.height();
        const double scale = std::abs(sx - 1.0) >= std::abs(sy - 1.0) ? sx : sy;
        width = std::max(1LL, std::llround(box.width() * scale));
        height = std::max(1LL, std::llround(box.height() * scale));
    }
    const int w = static_cast<int>(std::min<long long>(width, kLargestPictureSide));
    const int h = static_cast<int>(std::min<long long>(height, kLargestPictureSide));
    const int left = movesLeft ? box.left() + box.width() - w : box.left();
    const int top = movesTop ? box.top() + box.height() - h : box.top();
    return {left, top, w, h};
}

int FloatingHandles::Degrees(QPointF centre, QPointF from, QPointF to, bool snap) {
    // Screen y grows downwards, so QLineF's counter-clockwise angles turn
    // the other way on screen: start minus now is clockwise.
    const double turned = QLineF(centre, from).angle() - QLineF(centre, to).angle();
    const double step = snap ? 15.0 : 1.0;
    const long long degrees = std::llround(turned / step) * static_cast<long long>(step);
    return static_cast<int>(((degrees % 360) + 360) % 360);
}
