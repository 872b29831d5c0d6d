#pragma once

#include "view/CBriselView.h"
#include "view/CViewWindow.h"

#include <QCursor>

// The pointer shape over the picture while a painting tool is active: set at
// activation, cleared when the tool leaves so the next one starts plain.
namespace paintcursor {

inline void Show(const CBriselView& view, Qt::CursorShape shape) {
    if (view.Window() != nullptr) {
        view.Window()->viewport()->setCursor(shape);
    }
}

inline void Clear(const CBriselView& view) {
    if (view.Window() != nullptr) {
        view.Window()->viewport()->unsetCursor();
    }
}

} // namespace paintcursor
