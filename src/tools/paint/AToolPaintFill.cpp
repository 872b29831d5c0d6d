#include "tools/paint/AToolPaintFill.h"

#include "tools/paint/AToolPaintCursor.h"
#include "tools/paint/AToolPaintTarget.h"
#include "script/EngineOperationHandlers.h"
#include "script/EngineOperations.h"
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
    const QPoint point = ScreenToImage(pen.point);
    if (!painttarget::Contains(Document(), point - painttarget::Origin(Document()))) {
        return;
    }
    EngineOptions options;
    options.tolerance = platform::Settings::ReadInt("FloodFill", "Tolerance", 32);
    EngineStep step;
    step.numbers = {point.x(), point.y()};
    CommandContext context = Host()->EditingContext();
    {
        platform::WaitCursor wait;
        RunFill(context, options, step);
    }
    if (Window() != nullptr) {
        Window()->InvalidateAll();
    }
}
