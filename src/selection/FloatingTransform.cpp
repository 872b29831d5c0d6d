#include "selection/FloatingTransform.h"

#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/CommandContext.h"
#include "image/ImageCoordinates.h"
#include "ops/ImageCommands.h"

namespace {

int FloorHalf(int value) {
    return value >= 0 ? value / 2 : -((-value + 1) / 2);
}

// After a command replaced the floating pixels: moves them to (x, y), and
// lets the command's undo step take the old place back with it.
void PlaceAfterCommand(CommandContext& context, int oldX, int oldY, int x, int y) {
    context.undo.SetPosition(oldX, oldY);
    context.doc.SetFloatPosition(ClampCoordinate(x), ClampCoordinate(y));
    context.doc.UpdateAllViews();
}

} // namespace

int ScaleFloating(CommandContext& context, int width, int height, int left, int top) {
    CBriselDoc& doc = context.doc;
    if (doc.GetFloatImage() == nullptr || doc.GetFloatMask() == nullptr) {
        return 0;
    }
    const int oldX = doc.FloatX();
    const int oldY = doc.FloatY();
    const CDibImage* before = doc.GetFloatImage();
    if (!RunRescale(context, width, height, 0) || doc.GetFloatImage() == before) {
        return 0;
    }
    PlaceAfterCommand(context, oldX, oldY, left, top);
    return 1;
}

int RotateFloating(CommandContext& context, int degrees) {
    CBriselDoc& doc = context.doc;
    const CDibImage* before = doc.GetFloatImage();
    if (before == nullptr || doc.GetFloatMask() == nullptr) {
        return 0;
    }
    const int oldX = doc.FloatX();
    const int oldY = doc.FloatY();
    const int oldWidth = before->Width();
    const int oldHeight = before->Height();
    if (!RunRotate(context, degrees, true) || doc.GetFloatImage() == before) {
        return 0;
    }
    const CDibImage* after = doc.GetFloatImage();
    PlaceAfterCommand(context, oldX, oldY, oldX + FloorHalf(oldWidth - after->Width()),
                      oldY + FloorHalf(oldHeight - after->Height()));
    return 1;
}
