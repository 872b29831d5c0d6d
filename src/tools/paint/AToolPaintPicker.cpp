#include "tools/paint/AToolPaintPicker.h"

#include "image/CBriselDoc.h"
#include "tools/paint/AToolPaintCursor.h"
#include "paint/BrushEngine.h"
#include "view/ViewHost.h"

namespace {

bool Contains(const CDibImage* image, QPoint point) {
    return image != nullptr && point.x() >= 0 && point.y() >= 0 && point.x() < image->Width() &&
           point.y() < image->Height();
}

} // namespace

ColorWord AToolPaintPicker::ColorAt(const CBriselDoc& doc, QPoint point) {
    const QPoint inFloat = point - QPoint(doc.FloatX(), doc.FloatY());
    const CDibImage* floatMask = doc.GetFloatMask();
    const bool onFloating = doc.GetFloatImage() != nullptr && Contains(floatMask, inFloat) &&
                            floatMask->GetBit(inFloat.x(), inFloat.y()) != 0;
    BrushEngine reader;
    reader.SetTargetImage(onFloating ? doc.GetFloatImage() : doc.GetPicture());
    return onFloating ? reader.ReadPixel(inFloat.x(), inFloat.y()) : reader.ReadPixel(point.x(), point.y());
}

bool AToolPaintPicker::Pick(QPoint screen) {
    const CBriselDoc* doc = Document();
    ViewHost* host = Host();
    const QPoint point = ScreenToImage(screen);
    if (doc == nullptr || host == nullptr || !Contains(doc->GetPicture(), point)) {
        return false;
    }
    const ColorWord color = ColorAt(*doc, point);
    if (host->CurrentColorSlot() == 0) {
        host->SetForegroundColor(color);
    } else {
        host->SetBackgroundColor(color);
    }
    return true;
}

void AToolPaintPicker::ToolActivate() {
    paintcursor::Show(*this, Qt::CrossCursor);
}

void AToolPaintPicker::ToolDeactivate() {
    AToolOutlineView::ToolDeactivate();
    paintcursor::Clear(*this);
}

void AToolPaintPicker::OnPenDown(const PenEvent& pen) {
    m_dragging = Pick(pen.point);
}

void AToolPaintPicker::OnPenMove(const PenEvent& pen) {
    if (m_dragging) {
        Pick(pen.point);
    }
}

void AToolPaintPicker::OnPenUp(const PenEvent&) {
    m_dragging = false;
}
