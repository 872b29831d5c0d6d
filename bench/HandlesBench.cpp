// The handles of a 2000 x 1500 floating selection (on a 2400 x 1800 picture,
// in a 1280 x 800 view at zoom 1):
//  - BM_Handles/PreviewFrame/scale and /rotate: one pen move of a handle
//    drag, which repaints the whole view with the live preview at once; "ms"
//    is the wall time of a frame (the budget is 33 ms), "down_ms" that of the
//    pen-down, which takes the preview's copy of the floating pixels.
//  - BM_Handles/Release/scale and /rotate against BM_Handles/Menu/rescale and
//    /rotate: the transform a release runs (to 2400 x 1800, and 30 degrees)
//    against the Image menu command it runs, on the same selection.
#include "BenchApplication.h"
#include "BenchPictures.h"
#include "ops/ImageCommands.h"
#include "selection/FloatingTransform.h"
#include "selection/SelectionShapes.h"
#include "support/TestViewHost.h"
#include "tools/ToolSwitch.h"
#include "tools/select/AToolSelectRect.h"
#include "tools/select/FloatingHandleDrag.h"
#include "tools/select/FloatingHandles.h"
#include "view/CViewWindow.h"
#include "view/PenEvent.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <chrono>
#include <memory>

namespace {

constexpr int kPictureWidth = 2400;
constexpr int kPictureHeight = 1800;

// A document whose selection is an ellipse in 200..2199 x 150..1649, floating.
void MakeFloating(TestViewHost& host) {
    host.doc.SetPicture(NewPhoto(kPictureWidth, kPictureHeight));
    host.doc.SetMask(CreateMask(kPictureWidth, kPictureHeight, true));
    CommandContext context = host.EditingContext();
    SelectEllipse(context, 200, 150, 2199, 1649, WandCombine::New);
}

double Milliseconds(std::chrono::steady_clock::duration d) {
    return std::chrono::duration<double, std::milli>(d).count();
}

void PreviewFrame(benchmark::State& state, bool rotate) {
    EnsureBenchApplication();
    TestViewHost host;
    MakeFloating(host);
    CViewWindow view;
    view.resize(1280, 800);
    view.View()->Attach(&view, &host.doc, &host);
    view.show();
    QApplication::processEvents();
    view.View()->OnInitialUpdate();
    view.View()->ZoomActual();
    SwitchToolView(view, &host.doc, &host, std::make_unique<AToolSelectRect>());
    CBriselView& tool = *view.View();
    // The handle is in view: the view scrolls to the selection's top-left.
    tool.ScrollToPosition(100, 0);
    const int handle = rotate ? FloatingHandles::kRotate : FloatingHandles::kTopLeft;
    const QPoint from = FloatingHandles(FloatingHandleDrag::ScreenBox(tool)).Centre(handle);
    const auto down = std::chrono::steady_clock::now();
    tool.OnPenDown(PenEvent{from});
    const double downMs = Milliseconds(std::chrono::steady_clock::now() - down);
    if (static_cast<AToolSelect&>(tool).DragMode() != AToolSelect::kHandle || !view.viewport()->isVisible()) {
        state.SkipWithError("the press missed the handle");
        return;
    }
    double total = 0.0;
    int step = 0;
    for (auto _ : state) {
        step = step % 200 + 1;
        const QPoint to = from + QPoint(step, step / 2);
        const auto start = std::chrono::steady_clock::now();
        tool.OnPenMove(PenEvent{to, Qt::NoModifier});
        total += Milliseconds(std::chrono::steady_clock::now() - start);
    }
    tool.OnKeyDown(Qt::Key_Escape);
    tool.OnPenUp(PenEvent{from});
    state.counters["ms"] = total / static_cast<double>(state.iterations());
    state.counters["down_ms"] = downMs;
}

// `run` once per iteration on a fresh floating selection; only `run` is timed.
template <class Run> void Transform(benchmark::State& state, Run run) {
    EnsureBenchApplication();
    for (auto _ : state) {
        TestViewHost host;
        MakeFloating(host);
        CommandContext context = host.EditingContext();
        const auto start = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(run(context));
        state.SetIterationTime(Milliseconds(std::chrono::steady_clock::now() - start) / 1e3);
    }
}

const bool kRegistered = [] {
    benchmark::RegisterBenchmark("BM_Handles/PreviewFrame/scale",
                                 [](benchmark::State& s) { PreviewFrame(s, false); })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark("BM_Handles/PreviewFrame/rotate",
                                 [](benchmark::State& s) { PreviewFrame(s, true); })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark(
        "BM_Handles/Release/scale",
        [](benchmark::State& s) {
            Transform(s, [](CommandContext& c) { return ScaleFloating(c, 2400, 1800, 0, 0); });
        })
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime();
    benchmark::RegisterBenchmark("BM_Handles/Menu/rescale",
                                 [](benchmark::State& s) {
                                     Transform(
                                         s, [](CommandContext& c) { return RunRescale(c, 2400, 1800, 0); });
                                 })
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime();
    benchmark::RegisterBenchmark(
        "BM_Handles/Release/rotate",
        [](benchmark::State& s) { Transform(s, [](CommandContext& c) { return RotateFloating(c, 30); }); })
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime();
    benchmark::RegisterBenchmark(
        "BM_Handles/Menu/rotate",
        [](benchmark::State& s) { Transform(s, [](CommandContext& c) { return RunRotate(c, 30, true); }); })
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime();
    return true;
}();

} // namespace
