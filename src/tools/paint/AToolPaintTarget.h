#pragma once

#include "image/CBriselDoc.h"
#include "view/CBriselView.h"

#include <QPoint>

// Where the painting tools paint: the floating pixels while a selection
// floats, else the picture. Target pixels are picture pixels shifted by the
// floating position.
namespace painttarget {

inline CDibImage* Image(const CBriselDoc* doc) {
    return doc != nullptr ? doc->GetImage() : nullptr;
}

// The picture pixel of target pixel (0, 0).
inline QPoint Origin(const CBriselDoc* doc) {
    return doc != nullptr && doc->GetFloatImage() != nullptr ? QPoint(doc->FloatX(), doc->FloatY())
                                                             : QPoint();
}

// A client point of `view` in target pixels.
inline QPoint FromScreen(const CBriselView& view, QPoint screen) {
    return view.ScreenToImage(screen) - Origin(view.Document());
}

inline bool Contains(const CBriselDoc* doc, QPoint point) {
    const CDibImage* image = Image(doc);
    return image != nullptr && point.x() >= 0 && point.y() >= 0 && point.x() < image->Width() &&
           point.y() < image->Height();
}

} // namespace painttarget
