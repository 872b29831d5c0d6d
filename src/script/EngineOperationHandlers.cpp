#include "script/EngineOperationHandlers.h"

#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/DibHelpers.h"
#include "ops/EditCommandTable.h"
#include "paint/ArtisticPen.h"
#include "paint/BrushEngine.h"
#include "paint/CloneStamp.h"
#include "paint/EditingTarget.h"
#include "paint/PaintCommands.h"
#include "paint/PenStroke.h"
#include "paint/ShapeDrawing.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"
#include "selection/SelectionShapes.h"

#include <algorithm>

namespace {

// The engine pointed at the target with the context's colours, the oval table
// of the pen built, and the undo step opened (kind 1): a painting step that
// saves what `Touches` names before the painting.
struct PaintSession {
    PaintSession(CommandContext& context, const EngineOptions& options, ColorWord ink)
        : target(EditingTargetOf(context.doc)), reach((options.penSize + 1) / 2 + 1) {
        engine.SetTargetImage(target.image);
        engine.SetForegroundColor(ink);
        engine.SetBackgroundColor(context.background);
        engine.BuildOvalTable(options.penSize);
        opened = target.image != nullptr && context.undo.RecordRegionWithWarning(context.doc) != 0;
    }
    // Saves target pixels left..right, top..bottom grown by the pen's reach.
    void Touches(CommandContext& context, int left, int top, int right, int bottom) const {
        context.undo.SaveRegion(context.doc, std::min(left, right) - reach, std::min(top, bottom) - reach,
                                std::max(left, right) + reach, std::max(top, bottom) + reach);
    }
    void TouchesPoints(CommandContext& context, const std::vector<std::array<int, 2>>& points) const {
        for (std::size_t i = 0; i < points.size(); ++i) {
            const auto& from = points[i == 0 ? 0 : i - 1];
            Touches(context, from[0], from[1], points[i][0], points[i][1]);
        }
    }
    int Done(CommandContext& context) const {
        context.doc.SetModifiedFlag();
        context.doc.UpdateAllViews();
        return 1;
    }

    EditingTarget target;
    BrushEngine engine;
    int reach;
    bool opened = false;
};

std::vector<std::array<int, 2>> Shifted(const EngineStep& step, const EditingTarget& target) {
    std::vector<std::array<int, 2>> points = step.points;
    for (auto& p : points) {
        p[0] += target.dx;
        p[1] += target.dy;
    }
    return points;
}

// A pen stroke in `ink`; with a similarity of 0 or more, instead an eraser
// stroke that turns only colours that near the foreground colour into the
// background colour (draw mode 6), as the eraser's "foreground only" does.
int Stroke(CommandContext& context, const EngineOptions& options, const EngineStep& step, ColorWord ink,
           int similarity = -1) {
    if (!EditingTargetOf(context.doc).Contains(step.points[0][0], step.points[0][1])) {
        return 0;
    }
    PaintSession session(context, options, ink);
    if (!session.opened) {
        return 0;
    }
    const auto points = Shifted(step, session.target);
    session.TouchesPoints(context, points);
    if (similarity < 0) {
        PenStroke(session.engine, reinterpret_cast<const int(*)[2]>(points.data()),
                  static_cast<int>(points.size()), options.penSize, options.penShape, false);
        return session.Done(context);
    }
    BrushEngine& engine = session.engine;
    engine.SetColorMatchBounds(similarity, similarity, similarity);
    engine.Dab(points[0][0], points[0][1], options.penSize, options.penShape, kModeColorReplace);
    for (std::size_t i = 1; i < points.size(); ++i) {
        engine.Segment(points[i - 1][0], points[i - 1][1], points[i][0], points[i][1], options.penSize,
                       options.penShape, kModeColorReplace);
    }
    return session.Done(context);
}

int Shape(CommandContext& context, const EngineOptions& options, const EngineStep& step, bool ellipse) {
    PaintSession session(context, options, context.foreground);
    if (!session.opened) {
        return 0;
    }
    const auto& n = step.numbers;
    const int style = n.size() > 4 ? n[4] : 0;
    const int dx = session.target.dx;
    const int dy = session.target.dy;
    session.Touches(context, n[0] + dx, n[1] + dy, n[2] + dx, n[3] + dy);
    if (ellipse) {
        DrawEllipseShape(session.engine, n[0] + dx, n[1] + dy, n[2] + dx, n[3] + dy, options.penSize, style);
    } else {
        DrawRectangleShape(session.engine, n[0] + dx, n[1] + dy, n[2] + dx, n[3] + dy, options.penSize,
                           style);
    }
    return session.Done(context);
}

WandCombine CombineOf(const EngineStep& step, std::size_t at) {
    return step.numbers.size() > at ? static_cast<WandCombine>(step.numbers[at]) : WandCombine::New;
}

} // namespace

int RunPen(CommandContext& c, const EngineOptions& o, const EngineStep& s) {
    return Stroke(c, o, s, c.foreground);
}

int RunEraser(CommandContext& c, const EngineOptions& o, const EngineStep& s) {
    return o.eraseSimilar < 0 ? Stroke(c, o, s, c.background) : Stroke(c, o, s, c.foreground, o.eraseSimilar);
}

int RunFill(CommandContext& context, const EngineOptions& options, const EngineStep& step) {
    return FillAt(context, step.numbers[0], step.numbers[1], options.tolerance);
}

int RunLine(CommandContext& context, const EngineOptions& options, const EngineStep& step) {
    const EditingTarget target = EditingTargetOf(context.doc);
    if (!target.Contains(step.numbers[0], step.numbers[1])) {
        return 0;
    }
    PaintSession session(context, options, context.foreground);
    if (!session.opened) {
        return 0;
    }
    const auto& n = step.numbers;
    // The end point is kept inside the image, as the line tool does.
    const int x1 = std::clamp(n[2] + target.dx, 0, target.image->Width() - 1);
    const int y1 = std::clamp(n[3] + target.dy, 0, target.image->Height() - 1);
    session.Touches(context, n[0] + target.dx, n[1] + target.dy, x1, y1);
    session.engine.Segment(n[0] + target.dx, n[1] + target.dy, x1, y1, options.penSize, options.penShape,
                           kModeSolid);
    return session.Done(context);
}

int RunRect(CommandContext& c, const EngineOptions& o, const EngineStep& s) {
    return Shape(c, o, s, false);
}

int RunEllipse(CommandContext& c, const EngineOptions& o, const EngineStep& s) {
    return Shape(c, o, s, true);
}

// A stroke in any draw mode, with the blend parameters a command line uses:
// half opacity, the tolerance as colour similarity.
int RunBrush(CommandContext& context, const EngineOptions& options, const EngineStep& step) {
    const int mode = step.numbers[0];
    if (mode < 1 || mode > 12 || mode == 9 || mode == 10) {
        return 0;
    }
    PaintSession session(context, options, context.foreground);
    if (!session.opened) {
        return 0;
    }
    const auto reference = DuplicateImage(session.target.image);
    BrushEngine& engine = session.engine;
    engine.SetReferenceImage(reference.get());
    engine.ComputeForegroundHue(RedOf(context.foreground), GreenOf(context.foreground),
                                BlueOf(context.foreground));
    engine.SetColorMatchBounds(options.tolerance, options.tolerance, options.tolerance);
    engine.SetWashOpacity(128);
    engine.SetGrain(128, 2);
    engine.SetSpeckle(128, 32, 2);
    const auto points = Shifted(step, session.target);
    session.TouchesPoints(context, points);
    engine.Dab(points[0][0], points[0][1], options.penSize, options.penShape, mode);
    for (std::size_t i = 1; i < points.size(); ++i) {
        engine.Segment(points[i - 1][0], points[i - 1][1], points[i][0], points[i][1], options.penSize,
                       options.penShape, mode);
    }
    return session.Done(context);
}

int RunTablet(CommandContext& context, const EngineOptions& options, const EngineStep& step) {
    const int kind = step.numbers[0];
    if (!IsArtisticPenKind(kind)) {
        return 0;
    }
    PaintSession session(context, options, context.foreground);
    if (!session.opened) {
        return 0;
    }
    const auto reference = DuplicateImage(session.target.image);
    session.engine.SetReferenceImage(reference.get());
    const auto points = Shifted(step, session.target);
    session.TouchesPoints(context, points);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto& from = points[i == 0 ? 0 : i - 1];
        PaintArtisticSegment(session.engine, kind, from[0], from[1], points[i][0], points[i][1],
                             options.penSize, options.penShape);
    }
    return session.Done(context);
}

// The first point is the clone source, the rest the stroke, painted as the
// clone stamp paints a stroke after a new source point.
int RunClone(CommandContext& context, const EngineOptions& options, const EngineStep& step) {
    const auto& source = step.points[0];
    const auto& start = step.points[1];
    const EditingTarget target = EditingTargetOf(context.doc);
    if (!target.Contains(start[0], start[1])) {
        return 0;
    }
    CloneStamp stamp;
    stamp.SetSource(source[0], source[1]);
    stamp.FixOffset(start[0], start[1], true);
    PaintSession session(context, options, context.foreground);
    if (!session.opened) {
        return 0;
    }
    if (!stamp.BeginStroke(session.engine, *session.target.image)) {
        platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    EngineStep stroke = step;
    stroke.points.erase(stroke.points.begin());
    const auto points = Shifted(stroke, session.target);
    session.TouchesPoints(context, points);
    stamp.Dab(session.engine, points[0][0], points[0][1], options.penSize, options.penShape);
    for (std::size_t i = 1; i < points.size(); ++i) {
        stamp.Segment(session.engine, points[i - 1][0], points[i - 1][1], points[i][0], points[i][1],
                      options.penSize, options.penShape);
    }
    stamp.EndStroke(session.engine);
    return session.Done(context);
}

// The whole picture (or the floating pixels) rendered anew into a copy that
// replaces it with an undo step; a drag of no length changes nothing.
int RunGradient(CommandContext& context, const EngineOptions& options, const EngineStep& step) {
    const auto& n = step.numbers;
    return DrawGradient(context, options.gradientShape, options.gradientMode, n[0], n[1], n[2], n[3]);
}

int RunSelectRect(CommandContext& c, const EngineOptions&, const EngineStep& s) {
    const auto& n = s.numbers;
    SelectRectangle(c, n[0], n[1], n[2], n[3], CombineOf(s, 4));
    return 1;
}

int RunSelectEllipse(CommandContext& c, const EngineOptions&, const EngineStep& s) {
    const auto& n = s.numbers;
    SelectEllipse(c, n[0], n[1], n[2], n[3], CombineOf(s, 4));
    return 1;
}

int RunWand(CommandContext& context, const EngineOptions& options, const EngineStep& step) {
    const CDibImage* picture = context.doc.GetPicture();
    const int x = step.numbers[0];
    const int y = step.numbers[1];
    if (picture == nullptr || x < 0 || y < 0 || x >= picture->Width() || y >= picture->Height()) {
        return 0;
    }
    RunMagicWand(context, x, y, CombineOf(step, 2), options.tolerance, options.continuous);
    return 1;
}

int RunMoveFloating(CommandContext& context, const EngineOptions&, const EngineStep& step) {
    EditResult result;
    return EditMoveFloating(context, step.numbers[0], step.numbers[1], result);
}

int RunFillSelection(CommandContext& context, const EngineOptions&, const EngineStep& step) {
    EditResult result;
    return EditFillWith(context, step.numbers[0], result);
}

// The Edit menu's commands, run from their table when they are enabled.
int RunEditCommand(int id, CommandContext& context, const EngineOptions&, const EngineStep&) {
    const EditCommand* command = FindEditCommand(id);
    EditResult result;
    return command != nullptr && IsEditCommandEnabled(*command, &context.doc) ? command->run(context, result)
                                                                              : 0;
}
