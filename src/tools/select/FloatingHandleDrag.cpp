#include "tools/select/FloatingHandleDrag.h"

#include "image/CBriselDoc.h"
#include "image/CDibImage.h"
#include "ops/EditCommands.h"
#include "selection/FloatingTransform.h"
#include "tools/select/FloatingHandles.h"
#include "view/CBriselView.h"
#include "view/CDisplayRenderer.h"
#include "view/CViewWindow.h"
#include "view/PenEvent.h"
#include "view/ViewHost.h"

#include <QPainter>
#include <QTransform>

QRect FloatingHandleDrag::ScreenBox(const CBriselView& view) {
    const CBriselDoc* doc = view.Document();
    if (doc == nullptr || doc->GetFloatMask() == nullptr || doc->GetFloatImage() == nullptr) {
        return {};
    }
    const ImageRect box = doc->GetFloatRect();
    return view.ImageRectToScreen(box.left, box.top, box.right - 1, box.bottom - 1);
}

namespace {

void PaintHandleSquares(const QRect& screenBox, QPainter& painter) {
    const FloatingHandles handles(screenBox);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(Qt::black, 1));
    const QPoint top = handles.Centre(FloatingHandles::kTop);
    painter.drawLine(QPoint(top.x(), top.y() - FloatingHandles::kSize / 2),
                     handles.Centre(FloatingHandles::kRotate));
    painter.setBrush(Qt::white);
    for (int handle = FloatingHandles::kTopLeft; handle <= FloatingHandles::kLeft; ++handle) {
        painter.drawRect(handles.Square(handle).adjusted(0, 0, -1, -1));
    }
    painter.drawEllipse(handles.Square(FloatingHandles::kRotate).adjusted(0, 0, -1, -1));
    painter.restore();
}

} // namespace

void FloatingHandleDrag::PaintHandles(const CBriselView& view, QPainter& painter) {
    const QRect box = ScreenBox(view);
    if (!box.isEmpty()) {
        PaintHandleSquares(box, painter);
    }
}

int FloatingHandleDrag::HandleAt(const CBriselView& view, QPoint client) {
    const QRect box = ScreenBox(view);
    return box.isEmpty() ? FloatingHandles::kNone : FloatingHandles(box).HitTest(client);
}

bool FloatingHandleDrag::Begin(const CBriselView& view, QPoint client) {
    const int handle = HandleAt(view, client);
    if (handle == FloatingHandles::kNone) {
        return false;
    }
    const ImageRect box = view.Document()->GetFloatRect();
    m_handle = handle;
    m_start = client;
    m_box = QRect(box.left, box.top, box.right - box.left, box.bottom - box.top);
    m_target = m_box;
    m_degrees = 0;
    TakePreviewCopy(view);
    return true;
}

bool FloatingHandleDrag::Rotating() const {
    return m_handle == FloatingHandles::kRotate;
}

void FloatingHandleDrag::Move(const CBriselView& view, QPoint client, Qt::KeyboardModifiers modifiers) {
    if (!Active()) {
        return;
    }
    const bool shift = modifiers.testFlag(Qt::ShiftModifier);
    if (Rotating()) {
        const QRect screenBox =
            view.ImageRectToScreen(m_box.left(), m_box.top(), m_box.right(), m_box.bottom());
        m_degrees = FloatingHandles::Degrees(QRectF(screenBox).center(), m_start, client, shift);
        return;
    }
    const QPoint delta = view.ScreenToImage(client) - view.ScreenToImage(m_start);
    m_target = FloatingHandles::Scaled(m_box, m_handle, delta, shift);
}

int FloatingHandleDrag::Release(CommandContext& context) {
    const int handle = m_handle;
    m_handle = -1;
    m_preview = QImage();
    if (handle == FloatingHandles::kRotate) {
        return m_degrees != 0 ? RotateFloating(context, m_degrees) : 0;
    }
    if (handle < 0 || m_target == m_box) {
        return 0;
    }
    return ScaleFloating(context, m_target.width(), m_target.height(), m_target.left(), m_target.top());
}

void FloatingHandleDrag::Cancel() {
    m_handle = -1;
    m_preview = QImage();
}

QString FloatingHandleDrag::StatusText() const {
    if (!Active()) {
        return {};
    }
    if (Rotating()) {
        return QStringLiteral("%1 degrees").arg(m_degrees);
    }
    return QStringLiteral("%1 x %2 pixels").arg(m_target.width()).arg(m_target.height());
}

// The floating pixels with their mask as alpha, once per drag.
void FloatingHandleDrag::TakePreviewCopy(const CBriselView& view) {
    const CDibImage* pixels = view.Document()->GetFloatImage();
    const CDibImage* mask = view.Document()->GetFloatMask();
    m_preview = QImage(pixels->Width(), pixels->Height(), QImage::Format_ARGB32_Premultiplied);
    if (m_preview.isNull() || pixels->BitsPerPixel() != 24) {
        m_preview = QImage();
        return;
    }
    for (int y = 0; y < pixels->Height(); ++y) {
        const std::uint8_t* source = pixels->RowData(y);
        const std::uint8_t* bits = mask->RowData(y);
        auto* out = reinterpret_cast<QRgb*>(m_preview.scanLine(y));
        for (int x = 0; x < pixels->Width(); ++x) {
            const bool selected = (bits[x >> 3] & (0x80 >> (x & 7))) != 0;
            out[x] = selected ? qRgb(source[3 * x + 2], source[3 * x + 1], source[3 * x]) : 0;
        }
    }
}

void FloatingHandleDrag::PaintPreview(const CBriselView& view, QPainter& painter) const {
    const CBriselDoc* doc = view.Document();
    if (!Active() || doc == nullptr || doc->GetPicture() == nullptr || view.Window() == nullptr) {
        return;
    }
    // The picture without the floating pixels under the whole visible area.
    ImageRect area;
    QPoint topLeft;
    if (view.DirtyImageArea(view.Window()->viewport()->rect(), area, topLeft)) {
        CDisplayRenderer& renderer = view.Host()->Renderer();
        renderer.SetZoom(view.Zoom());
        if (renderer.Bind(doc->GetPicture(), nullptr, nullptr, 0, 0)) {
            renderer.Render(painter, area, topLeft);
        }
        renderer.Release();
    }
    const QRect from = view.ImageRectToScreen(m_box.left(), m_box.top(), m_box.right(), m_box.bottom());
    QRect shown = from;
    painter.save();
    painter.setClipRect(view.ImageScreenArea());
    if (Rotating()) {
        const QPointF centre = QRectF(from).center();
        painter.translate(centre);
        painter.rotate(m_degrees);
        painter.translate(-centre);
    } else {
        shown = view.ImageRectToScreen(m_target.left(), m_target.top(), m_target.right(), m_target.bottom());
    }
    painter.drawImage(QRectF(shown), m_preview);
    painter.setClipping(false);
    painter.setPen(QPen(Qt::black, 1, Qt::DashLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(shown.adjusted(0, 0, -1, -1));
    painter.restore();
    if (!Rotating()) {
        PaintHandleSquares(shown, painter);
    }
}

void FloatingHandleDrag::MoveAndShow(CBriselView& view, const PenEvent& pen) {
    Move(view, pen.point, pen.modifiers);
    view.Host()->ShowToolStatus(StatusText().toStdString());
    if (view.Window() != nullptr) {
        view.Window()->InvalidateAll();
        view.Window()->UpdateNow();
    }
}

void FloatingHandleDrag::Finish(CBriselView& view, bool apply) {
    if (apply) {
        CommandContext context = view.Host()->EditingContext();
        Release(context);
    } else {
        Cancel();
    }
    view.Host()->ShowToolStatus({});
    if (view.Window() != nullptr) {
        view.Window()->InvalidateAll();
    }
}

bool FloatingHandleDrag::PutDownOnEnter(CBriselView& view, int key) {
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (!enter || view.Document() == nullptr || view.Document()->GetFloatMask() == nullptr) {
        return false;
    }
    PutDown(view);
    return true;
}

void FloatingHandleDrag::PutDown(CBriselView& view) {
    view.StopOutlineTimer();
    CommandContext context = view.Host()->EditingContext();
    EditResult result;
    EditSelectNone(context, result);
    if (view.Window() != nullptr) {
        view.Window()->InvalidateAll();
    }
}

void FloatingHandleDrag::ShowHoverCursor(CBriselView& view, QPoint client, int& shown) {
    const int handle = HandleAt(view, client);
    if (handle == shown || view.Window() == nullptr) {
        return;
    }
    shown = handle;
    if (handle == FloatingHandles::kNone) {
        view.Window()->viewport()->unsetCursor();
    } else {
        view.Window()->viewport()->setCursor(FloatingHandles::CursorOf(handle));
    }
}
