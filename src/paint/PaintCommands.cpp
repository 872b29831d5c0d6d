#include "paint/PaintCommands.h"

#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/CommandContext.h"
#include "image/DibHelpers.h"
#include "paint/EditingTarget.h"
#include "paint/FloodFill.h"
#include "paint/GradientRamp.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

#include <utility>

int FillAt(CommandContext& context, int x, int y, int tolerance) {
    const EditingTarget target = EditingTargetOf(context.doc);
    if (!target.Contains(x, y)) {
        return 0;
    }
    context.undo.Record(context.doc, 1);
    FloodFill(*target.image, x + target.dx, y + target.dy, context.foreground, tolerance);
    context.doc.SetModifiedFlag();
    context.doc.UpdateAllViews();
    return 1;
}

int DrawGradient(CommandContext& context, int shape, int colorMode, int x0, int y0, int x1, int y1) {
    CBriselDoc& doc = context.doc;
    const EditingTarget target = EditingTargetOf(doc);
    auto copy = DuplicateImage(target.image);
    if (!copy) {
        platform::ShowMessage(platform::IDS_DISK_SPACE_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    GradientRamp ramp;
    ramp.SetShape(shape);
    ramp.SetColorMode(colorMode);
    ramp.SetColors(context.foreground, context.background);
    if (!ramp.Render(*copy, x0 + target.dx, y0 + target.dy, x1 + target.dx, y1 + target.dy)) {
        return 1;
    }
    auto old = doc.SetImage(std::move(copy));
    context.undo.RecordObjects(doc, std::move(old), nullptr, 1, 0);
    doc.SetModifiedFlag();
    doc.UpdateAllViews();
    return 1;
}
