#pragma once

#include <QPoint>
#include <QRect>
#include <Qt>

// The handles of a floating selection: eight around its bounding box (at the
// corners and edge middles, just outside it) and a rotation handle above the
// top edge, all of a fixed screen size at every zoom, and what dragging each
// of them makes of the box.
class FloatingHandles {
public:
    enum Handle {
        kNone = -1,
        kTopLeft = 0,
        kTop,
        kTopRight,
        kRight,
        kBottomRight,
        kBottom,
        kBottomLeft,
        kLeft,
        kRotate,
    };
    static constexpr int kCount = 9;
    // Side of a handle's square and the rotation handle's distance above the
    // box, in screen pixels.
    static constexpr int kSize = 9;
    static constexpr int kRotateLift = 24;

    // `box` is the screen rectangle the floating pixels cover.
    explicit FloatingHandles(QRect box) : m_box(box) {}

    QPoint Centre(int handle) const;
    QRect Square(int handle) const;
    // The handle under a client point (the rotation handle first), or kNone.
    int HitTest(QPoint point) const;
    static Qt::CursorShape CursorOf(int handle);

    // The picture rectangle a scaling drag gives: `box` (picture pixels) with
    // the sides of `handle` moved by `delta`, at least 1 x 1; the opposite
    // side or corner stays. Proportional keeps the box's aspect ratio for
    // corner handles (the larger of the two changes wins).
    static QRect Scaled(QRect box, int handle, QPoint delta, bool proportional);
    // Clockwise degrees 0..359 between the rays from `centre` to `from` and
    // to `to` (screen points, y down), rounded; snapped to 15 degrees.
    static int Degrees(QPointF centre, QPointF from, QPointF to, bool snap);

private:
    QRect m_box;
};
