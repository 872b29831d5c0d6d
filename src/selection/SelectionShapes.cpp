#include "selection/SelectionShapes.h"

#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/CommandContext.h"
#include "paint/BrushEngine.h"
#include "paint/ShapeDrawing.h"

#include <algorithm>

namespace {

struct Corners {
    int left, top, right, bottom;
};

int SelectShape(CommandContext& context, int x0, int y0, int x1, int y1, WandCombine combine, bool ellipse) {
    CBriselDoc& doc = context.doc;
    if (doc.GetPicture() == nullptr || doc.GetSelectionMask() == nullptr) {
        return 0;
    }
    // A drag past the picture's edge selects up to the edge.
    const int width = doc.GetPicture()->Width();
    const int height = doc.GetPicture()->Height();
    const Corners box{std::clamp(std::min(x0, x1), 0, width - 1), std::clamp(std::min(y0, y1), 0, height - 1),
                      std::clamp(std::max(x0, x1), 0, width - 1),
                      std::clamp(std::max(y0, y1), 0, height - 1)};
    if (combine != WandCombine::New) {
        doc.MergeFloatMask(false);
    }
    context.undo.RecordWithWarning(doc, 5);
    doc.PutFloating(false);
    doc.SetFloatPosition(0, 0);
    BrushEngine engine;
    engine.SetForegroundColor(combine == WandCombine::Subtract ? 0x000000 : 0xFFFFFF);
    if (combine == WandCombine::New) {
        if (!doc.CreateFloating(box.left, box.top, box.right, box.bottom, ellipse)) {
            return 0;
        }
        doc.SetFloatPosition(box.left, box.top);
        if (ellipse) {
            engine.SetTargetImage(doc.GetFloatMask());
            DrawEllipseShape(engine, 0, 0, box.right - box.left, box.bottom - box.top, 1, 2);
        }
        return 1;
    }
    engine.SetTargetImage(doc.GetSelectionMask());
    if (ellipse) {
        DrawEllipseShape(engine, box.left, box.top, box.right, box.bottom, 1, 2);
    } else {
        engine.FillRect(box.left, box.top, box.right, box.bottom, kModeSolid);
    }
    return doc.FloatSelection();
}

} // namespace

int SelectRectangle(CommandContext& context, int x0, int y0, int x1, int y1, WandCombine combine) {
    return SelectShape(context, x0, y0, x1, y1, combine, false);
}

int SelectEllipse(CommandContext& context, int x0, int y0, int x1, int y1, WandCombine combine) {
    return SelectShape(context, x0, y0, x1, y1, combine, true);
}
