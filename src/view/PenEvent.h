#pragma once

#include <QPoint>
#include <Qt>

// One pen sample as the tools receive it: the client point in device pixels,
// the modifier keys, and the pressure (1.0 for a mouse; a tablet reports its
// own, 0..1).
struct PenEvent {
    QPoint point;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    qreal pressure = 1.0;
    bool fromTablet = false;
};
