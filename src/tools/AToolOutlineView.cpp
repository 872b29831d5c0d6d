#include "tools/AToolOutlineView.h"

#include "image/CBriselDoc.h"
#include "ops/EditCommands.h"
#include "view/CViewWindow.h"
#include "view/ViewHost.h"

void AToolOutlineView::ToolDeactivate() {
    m_outline.Clear();
}

bool AToolOutlineView::SyncOutline(bool force) {
    const CBriselDoc* doc = Document();
    if (doc == nullptr) {
        m_outline.Clear();
        return true;
    }
    if (m_outlineWorkMask) {
        return m_outline.Sync(*this, doc->GetSelectionMask(), 0, 0, force);
    }
    return m_outline.Sync(*this, doc->GetFloatMask(), doc->FloatX(), doc->FloatY(), force);
}

bool AToolOutlineView::OutlineShown() const {
    return State().outlineEnabled && State().outlineTimerOn;
}

void AToolOutlineView::ShowOutlineNow() {
    SyncOutline(true);
}

void AToolOutlineView::RefreshOutline() {
    if (OutlineShown()) {
        ShowOutlineNow();
    }
}

void AToolOutlineView::OnOutlineTick() {
    if (!State().outlineEnabled) {
        return;
    }
    SyncOutline(false);
    m_outline.Tick(*this);
}

void AToolOutlineView::RestartOutlineIfSelected() {
    if (Document() != nullptr && Document()->GetFloatMask() != nullptr) {
        StartOutlineTimer();
    }
}

bool AToolOutlineView::OverlayCovers(const QRegion& dirty) {
    if (!OutlineShown() || PreviewActive() || SyncOutline(false)) {
        return false;
    }
    return m_outline.Covers(dirty);
}

void AToolOutlineView::PaintOverlay(QPainter& painter) {
    if (OutlineShown()) {
        SyncOutline(false);
        m_outline.Paint(painter);
    }
}

void AToolOutlineView::EndFloatingOutside(QPoint screen) {
    CBriselDoc* doc = Document();
    if (doc == nullptr || Host() == nullptr || doc->GetFloatMask() == nullptr) {
        return;
    }
    const QPoint point = ScreenToImage(screen);
    const ImageRect box = doc->GetFloatRect();
    if (point.x() >= box.left && point.x() < box.right && point.y() >= box.top && point.y() < box.bottom) {
        return;
    }
    StopOutlineTimer();
    InvalidateSelection();
    CommandContext context = Host()->EditingContext();
    EditResult result;
    EditSelectNone(context, result);
    m_outline.Clear();
    if (Window() != nullptr) {
        Window()->InvalidateAll();
    }
}
