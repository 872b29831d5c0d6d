#include "tools/select/AToolSelectPen.h"

#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "view/CViewWindow.h"
#include "view/ViewHost.h"

#include <algorithm>

void AToolSelectPen::BeginShape(const PenEvent&, QPoint image) {
    CBriselDoc& doc = *Document();
    StopOutlineTimer();
    if (DragMode() == kNew) {
        InvalidateSelection();
    } else {
        // The work mask takes the current selection, to be painted on.
        doc.MergeFloatMask(false);
    }
    // The pen chosen on the palette, as the painting tools use it.
    m_penSize = std::clamp(Host()->PenSize(), 1, BrushEngine::kMaxPenSize);
    m_penShape = std::clamp(Host()->PenShape(), 1, 6);
    m_engine.SetTargetImage(doc.GetSelectionMask());
    m_engine.SetForegroundColor(DragMode() == kSubtract ? 0x000000 : 0xFFFFFF);
    m_changed = QRect(QPoint(32767, 32767), QPoint(-1, -1));
    m_painting = true;
    OutlineWorkMask(true);
    m_engine.Dab(image.x(), image.y(), m_penSize, m_penShape, kModeSolid);
    m_lastPoint = image;
    RepaintPainted(image.x(), image.y(), image.x(), image.y());
}

void AToolSelectPen::ContinueShape(const PenEvent&, QPoint image) {
    if (image == m_lastPoint) {
        return;
    }
    m_engine.Segment(m_lastPoint.x(), m_lastPoint.y(), image.x(), image.y(), m_penSize, m_penShape,
                     kModeSolid);
    RepaintPainted(m_lastPoint.x(), m_lastPoint.y(), image.x(), image.y());
    m_lastPoint = image;
}

// The pen reaches its size around the segment; the outline there is rebuilt
// and drawn whole, and the pixels of the old outline inside are repainted.
void AToolSelectPen::RepaintPainted(int x0, int y0, int x1, int y1) {
    const int reach = m_penSize + 1;
    const QRect touched(QPoint(std::min(x0, x1) - reach, std::min(y0, y1) - reach),
                        QPoint(std::max(x0, x1) + reach, std::max(y0, y1) + reach));
    m_changed = m_changed.right() < 0 ? touched : m_changed.united(touched);
    ShowOutlineNow();
    InvalidateImageRect(touched.left(), touched.top(), touched.right(), touched.bottom());
}

void AToolSelectPen::FinishShape(const PenEvent&, QPoint) {
    CommandContext context = Context();
    CBriselDoc& doc = context.doc;
    m_painting = false;
    OutlineWorkMask(false);
    context.undo.RecordWithWarning(doc, 5);
    doc.PutFloating(false);
    doc.SetFloatPosition(0, 0);
    doc.FloatSelection();
    Window()->InvalidateAll();
    RestartOutlineIfSelected();
}

bool AToolSelectPen::OutlineShown() const {
    return m_painting || AToolSelect::OutlineShown();
}
