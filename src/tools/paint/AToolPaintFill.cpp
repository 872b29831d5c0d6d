#include "tools/paint/AToolPaintFill.h"

#include "tools/paint/AToolPaintCursor.h"
#include "tools/paint/AToolPaintTarget.h"
#include "paint/PaintCommands.h"
#include "platform/Settings.h"
#include "platform/WaitCursor.h"
#include "view/CViewWindow.h"
#include "view/ViewHost.h"

void AToolPaintFill::ToolActivate() {
    paintcursor::Show(*this, Qt::CrossCursor);
}

void AToolPaintFill::ToolDeactivate() {
    AToolOutlineView::ToolDeactivate();
    paintcursor::Clear(*this);
}

void AToolPaintFill::OnPenDown(const PenEvent& pen) {
    if (Document() == nullptr || Host() == nullptr) {
        return;
    }
    EndFloatingOutside(pen.point);
    const QPoint point = ScreenToImage(pen.point);
    if (!painttarget::Contains(Document(), point - painttarget::Origin(Document()))) {
        return;
    }
    const int tolerance = platform::Settings::ReadInt("FloodFill", "Tolerance", 32);
    CommandContext context = Host()->EditingContext();
    {
        platform::WaitCursor wait;
        FillAt(context, point.x(), point.y(), tolerance);
    }
    if (Window() != nullptr) {
        Window()->InvalidateAll();
    }
}
