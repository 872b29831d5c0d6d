#include "tools/select/AToolSelectBox.h"

#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "paint/ShapeDrawing.h"
#include "selection/SelectionShapes.h"
#include "view/CViewWindow.h"

void AToolSelectBox::ToolActivate() {
    AToolSelect::ToolActivate();
    m_captureHeld = false;
    m_boxStart = QPoint();
    m_boxEnd = QPoint();
}

void AToolSelectBox::BeginShape(const PenEvent& pen, QPoint) {
    StopOutlineTimer();
    if (DragMode() == kNew) {
        // The old outline goes at once; the new box replaces the selection.
        InvalidateSelection();
        Window()->UpdateNow();
    }
    m_boxStart = pen.point;
    m_boxEnd = pen.point;
    m_band.Show(Window(), m_boxStart, m_boxEnd, m_ellipse);
    m_captureHeld = true;
    Window()->UpdateNow();
}

void AToolSelectBox::ContinueShape(const PenEvent& pen, QPoint) {
    int x = pen.point.x();
    int y = pen.point.y();
    if (pen.modifiers & Qt::AltModifier) {
        ConstrainToSquare(m_boxStart.x(), m_boxStart.y(), x, y);
    }
    m_boxEnd = QPoint(x, y);
    m_band.Show(Window(), m_boxStart, m_boxEnd, m_ellipse);
    Window()->UpdateNow();
}

void AToolSelectBox::FinishShape(const PenEvent&, QPoint) {
    m_captureHeld = false;
    const QRect box = m_band.Box();
    m_band.Hide(Window());
    SelectBox(box);
    Window()->UpdateNow();
}

bool AToolSelectBox::CancelShape() {
    m_captureHeld = false;
    m_band.Hide(Window());
    return true;
}

void AToolSelectBox::SelectBox(const QRect& screenBox) {
    CommandContext context = Context();
    CBriselDoc& doc = context.doc;
    if (screenBox.width() <= 1 || screenBox.height() <= 1) {
        // A box without width or height ends the selection and makes none.
        context.undo.RecordWithWarning(doc, 5);
        doc.PutFloating(false);
        doc.SetFloatPosition(0, 0);
        Window()->InvalidateAll();
        return;
    }
    // The engines clip the corners to the picture, so a drag past its edge
    // selects up to the edge.
    const QPoint start = ScreenToImage(screenBox.topLeft());
    const QPoint end = ScreenToImage(screenBox.bottomRight());
    const WandCombine combine = CombineOf(DragMode());
    if (m_ellipse) {
        SelectEllipse(context, start.x(), start.y(), end.x(), end.y(), combine);
    } else {
        SelectRectangle(context, start.x(), start.y(), end.x(), end.y(), combine);
    }
    Window()->InvalidateAll();
    RestartOutlineIfSelected();
}

void AToolSelectBox::PaintOverlay(QPainter& painter) {
    AToolSelect::PaintOverlay(painter);
    m_band.Paint(painter);
}
