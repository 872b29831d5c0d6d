#include "tools/select/AToolSelect.h"

#include "image/CBriselDoc.h"
#include "ops/EditCommands.h"
#include "view/CDisplayRenderer.h"
#include "view/CViewWindow.h"
#include "view/ViewHost.h"

#include <QPainter>
#include <algorithm>
#include <cstdlib>

void AToolSelect::ToolActivate() {
    m_combineMode = 0;
    m_spare1 = 0;
    m_spare2 = 0;
    m_dragMode = kIdle;
    if (Window() != nullptr && OffersHandles()) {
        Window()->InvalidateAll();
    }
}

void AToolSelect::ToolDeactivate() {
    AToolOutlineView::ToolDeactivate();
    if (Window() != nullptr && OffersHandles()) {
        Window()->InvalidateAll();
        Window()->viewport()->unsetCursor();
    }
}

CommandContext AToolSelect::Context() {
    return Host()->EditingContext();
}

int AToolSelect::ClassifyPress(QPoint image, Qt::KeyboardModifiers modifiers) const {
    if (modifiers & (Qt::ShiftModifier | Qt::ControlModifier)) {
        return (modifiers & Qt::ShiftModifier) ? kAdd : kSubtract;
    }
    const CBriselDoc* doc = Document();
    const CDibImage* mask = doc ? doc->GetFloatMask() : nullptr;
    const ViewState& s = State();
    // Both picture bounds count as inside; the mask answers 0 beyond itself.
    if (mask != nullptr && image.x() >= 0 && image.y() >= 0 && image.x() <= s.imageWidth &&
        image.y() <= s.imageHeight && mask->GetBit(image.x() - doc->FloatX(), image.y() - doc->FloatY())) {
        return kMoveFloating;
    }
    return kNew;
}

WandCombine AToolSelect::CombineOf(int dragMode) {
    switch (dragMode) {
    case kAdd:
        return WandCombine::Add;
    case kSubtract:
        return WandCombine::Subtract;
    default:
        return WandCombine::New;
    }
}

// ---- pen protocol -------------------------------------------------------------

void AToolSelect::OnPenDown(const PenEvent& pen) {
    if (Document() == nullptr || Host() == nullptr || m_dragMode != kIdle) {
        return;
    }
    const QPoint image = ScreenToImage(pen.point);
    if (!AcceptsPress(image)) {
        return;
    }
    if (OffersHandles() && !(pen.modifiers & Qt::ControlModifier) && m_handleDrag.Begin(*this, pen.point)) {
        m_dragMode = kHandle;
        StopOutlineTimer();
        return;
    }
    m_combineMode = (pen.modifiers & (Qt::ShiftModifier | Qt::ControlModifier)) ? 1 : 0;
    m_dragMode = ClassifyPress(image, pen.modifiers);
    if (m_dragMode == kMoveFloating) {
        BeginFloatingDrag(pen);
        return;
    }
    BeginShape(pen, image);
}

void AToolSelect::OnPenMove(const PenEvent& pen) {
    if (m_dragMode == kHandle) {
        m_handleDrag.MoveAndShow(*this, pen);
    } else if (m_dragMode == kMoveFloating) {
        ContinueFloatingDrag(pen);
    } else if (m_dragMode >= kNew && m_dragMode <= kSubtract) {
        ContinueShape(pen, ScreenToImage(pen.point));
    }
}

void AToolSelect::OnPenUp(const PenEvent& pen) {
    if (m_dragMode == kCancelled) {
        m_dragMode = kIdle;
    }
    if (m_dragMode == kHandle) {
        m_handleDrag.MoveAndShow(*this, pen);
        m_handleDrag.Finish(*this, true);
        RestartOutlineIfSelected();
    } else if (m_dragMode == kMoveFloating) {
        EndFloatingDrag();
    } else if (m_dragMode >= kNew && m_dragMode <= kSubtract) {
        FinishShape(pen, ScreenToImage(pen.point));
    }
    m_dragMode = kIdle;
}

bool AToolSelect::OnKeyDown(int key) {
    if (OffersHandles() && m_dragMode == kIdle && FloatingHandleDrag::PutDownOnEnter(*this, key)) {
        return true;
    }
    if (key != Qt::Key_Escape) {
        return CBriselView::OnKeyDown(key);
    }
    if (m_dragMode == kHandle) {
        m_handleDrag.Finish(*this, false);
        RestartOutlineIfSelected();
        m_dragMode = kCancelled;
    } else if (m_dragMode == kMoveFloating) {
        CancelFloatingDrag();
    } else if (m_dragMode >= kNew && m_dragMode <= kSubtract && CancelShape()) {
        m_dragMode = kCancelled;
        RestartOutlineIfSelected();
    }
    return true;
}

// ---- dragging the floating selection ----------------------------------------------

void AToolSelect::BeginFloatingDrag(const PenEvent& pen) {
    StopOutlineTimer();
    m_dragStart = pen.point;
    m_dragCurrent = pen.point;
    m_shownOffset = QPoint();
    // The outline stops where it is; the repaint takes it away.
    InvalidateSelection();
}

QPoint AToolSelect::FloatingDragOffset() const {
    return ScreenToImage(m_dragCurrent) - ScreenToImage(m_dragStart);
}

QRect AToolSelect::FloatingDragArea(QPoint offset) const {
    const ImageRect box = Document()->GetFloatRect();
    if (box == ImageRect{}) {
        return {};
    }
    const QRect here = ImageRectToScreen(box.left, box.top, box.right - 1, box.bottom - 1);
    const QRect there = ImageRectToScreen(box.left + offset.x(), box.top + offset.y(),
                                          box.right - 1 + offset.x(), box.bottom - 1 + offset.y());
    return here.united(there).intersected(ImageScreenArea());
}

void AToolSelect::ContinueFloatingDrag(const PenEvent& pen) {
    m_dragCurrent = pen.point;
    const QPoint offset = FloatingDragOffset();
    if (offset == m_shownOffset || Window() == nullptr) {
        return;
    }
    Window()->InvalidateClient(FloatingDragArea(m_shownOffset));
    Window()->InvalidateClient(FloatingDragArea(offset));
    m_shownOffset = offset;
    Window()->UpdateNow();
}

void AToolSelect::EndFloatingDrag() {
    const QPoint offset = FloatingDragOffset();
    if (Window() != nullptr) {
        Window()->InvalidateClient(FloatingDragArea(m_shownOffset));
        Window()->InvalidateClient(FloatingDragArea(offset));
    }
    m_shownOffset = QPoint();
    if (m_dragStart != m_dragCurrent) {
        CommandContext context = Context();
        EditResult result;
        EditMoveFloating(context, offset.x(), offset.y(), result);
    }
    m_dragMode = kIdle;
    InvalidateSelection();
    if (Window() != nullptr) {
        Window()->UpdateNow();
    }
    StartOutlineTimer();
}

void AToolSelect::CancelFloatingDrag() {
    if (Window() != nullptr) {
        Window()->InvalidateClient(FloatingDragArea(m_shownOffset));
    }
    m_shownOffset = QPoint();
    m_dragMode = kCancelled;
    RestartOutlineIfSelected();
}

// The picture under both places of the floating selection is rendered again
// with the floating pixels moved by the drag; the document is not touched.
void AToolSelect::PaintFloatingDrag(QPainter& painter) {
    const CBriselDoc* doc = Document();
    const CDibImage* picture = doc->GetPicture();
    if (m_shownOffset.isNull() || picture == nullptr || doc->GetFloatImage() == nullptr) {
        return;
    }
    const ImageRect box = doc->GetFloatRect();
    const int dx = m_shownOffset.x();
    const int dy = m_shownOffset.y();
    ImageRect area{std::max(std::min(box.left, box.left + dx), 0),
                   std::max(std::min(box.top, box.top + dy), 0),
                   std::min(std::max(box.right, box.right + dx), picture->Width()) - 1,
                   std::min(std::max(box.bottom, box.bottom + dy), picture->Height()) - 1};
    if (Zoom() <= -2) {
        // A reduced screen pixel stands for a whole block of image pixels.
        area.left -= area.left % -Zoom();
        area.top -= area.top % -Zoom();
    }
    if (area.right < area.left || area.bottom < area.top) {
        return;
    }
    CDisplayRenderer& renderer = Host()->Renderer();
    renderer.SetZoom(Zoom());
    if (renderer.Bind(picture, doc->GetFloatImage(), doc->GetFloatMask(), doc->FloatX() + dx,
                      doc->FloatY() + dy)) {
        renderer.Render(painter, area, ImageToScreen({area.left, area.top}));
    }
    renderer.Release();
}

// ---- the outline ------------------------------------------------------------------

bool AToolSelect::OutlineShown() const {
    return State().outlineEnabled &&
           (State().outlineTimerOn || m_dragMode == kAdd || m_dragMode == kSubtract);
}

void AToolSelect::PaintOverlay(QPainter& painter) {
    if (Document() == nullptr || Host() == nullptr) {
        return;
    }
    if (m_dragMode == kHandle) {
        m_handleDrag.PaintPreview(*this, painter);
        return;
    }
    if (m_dragMode == kMoveFloating) {
        PaintFloatingDrag(painter);
    }
    AToolOutlineView::PaintOverlay(painter);
    if (OffersHandles() && m_dragMode != kMoveFloating) {
        FloatingHandleDrag::PaintHandles(*this, painter);
    }
}

// ---- the handles ------------------------------------------------------------------

void AToolSelect::OnPointerHover(QPoint client) {
    if (OffersHandles() && m_dragMode == kIdle) {
        FloatingHandleDrag::ShowHoverCursor(*this, client, m_hoverHandle);
    }
}
