// The screen: CDisplayRenderer drawing a 1920 x 1080 view of a 4000 x 3000
// picture into a window-sized image through a QPainter, as a full repaint does,
// at every zoom code, in true colour and both dithered modes, plain, with a
// floating selection, and with the floating selection and its marching
// outline; from x4 up also with the pixel grid. Each case reports "ms" (its
// CPU time on the one core it runs on, which other busy processes distort less
// than the wall clock; the budget is 8 ms) and the grid cases "x_plain", their
// time over the same view without the grid measured in the same run.
//
// What a person waits for besides a full repaint:
//  - BM_Screen/PenSegment: one segment of a 100-segment pen stroke at zoom 1:
//    the painting step saves the segment's pixels, the brush paints it and the
//    touched rectangle is repainted.
//  - BM_Screen/ScrollOneScreen: scrolling by one screen repaints the whole
//    view at the new position.
//  - BM_Screen/Preview*: a slider change of Brightness/Contrast or
//    Hue/Saturation recomputes the whole picture (on all cores), then the view
//    is repainted: "ms" is the wall time, "cpu_ms" that of all threads.
#include "BenchApplication.h"
#include "BenchPictures.h"
#include "image/CBriselDoc.h"
#include "image/CDibImage.h"
#include "image/CUndoHistory.h"
#include "ops/AdjustPreview.h"
#include "paint/BrushEngine.h"
#include "selection/SelectionOutline.h"
#include "view/CDisplayRenderer.h"

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <QPolygon>

#include <ctime>
#include <map>
#include <memory>
#include <string>

namespace {

// CPU time of the calling thread, or of all the process's threads.
double ClockSeconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}
double ThreadSeconds() {
    return ClockSeconds(CLOCK_THREAD_CPUTIME_ID);
}

constexpr int kWidth = 4000;
constexpr int kHeight = 3000;
constexpr int kViewWidth = 1920;
constexpr int kViewHeight = 1080;

const CDibImage& Photo() {
    static const std::unique_ptr<CDibImage> photo = NewPhoto(kWidth, kHeight);
    return *photo;
}

std::unique_ptr<CDibImage> CopyOfPhoto() {
    auto copy = std::make_unique<CDibImage>();
    copy->CopyFrom(Photo());
    return copy;
}

// A floating selection: an elliptic piece of 1200 x 900 pixels.
struct Floating {
    std::unique_ptr<CDibImage> pixels = NewPhoto(1200, 900);
    std::unique_ptr<CDibImage> mask = NewPicture(1200, 900, 1);
    int x = 900;
    int y = 500;
    Floating() {
        for (int py = 0; py < 900; ++py) {
            for (int px = 0; px < 1200; ++px) {
                const double u = (px - 599.5) / 600.0;
                const double v = (py - 449.5) / 450.0;
                mask->SetBit(px, py, u * u + v * v <= 1.0);
            }
        }
    }
};

const Floating& FloatingPiece() {
    static const Floating floating;
    return floating;
}

// The image rectangle a 1920 x 1080 view shows from image point (x0, y0).
ImageRect VisibleArea(int zoom, int x0, int y0) {
    const int across = zoom >= 1 ? kViewWidth / zoom : kViewWidth * -zoom;
    const int down = zoom >= 1 ? kViewHeight / zoom : kViewHeight * -zoom;
    return {x0, y0, std::min(kWidth, x0 + across) - 1, std::min(kHeight, y0 + down) - 1};
}

OutlineViewport ViewportOf(const ImageRect& area, int zoom) {
    OutlineViewport v;
    v.firstX = area.left;
    v.firstY = area.top;
    v.visibleWidth = area.right - area.left + 1 + std::abs(zoom) + 1;
    v.visibleHeight = area.bottom - area.top + 1 + std::abs(zoom) + 1;
    v.zoom = zoom;
    v.scrollX = zoom >= 1 ? area.left * zoom : area.left / -zoom;
    v.scrollY = zoom >= 1 ? area.top * zoom : area.top / -zoom;
    return v;
}

// Draws the outline's pixels as the view does, in two colours.
void PaintOutline(QPainter& painter, const SelectionOutline& outline) {
    QPolygon white;
    QPolygon black;
    const int phase = outline.Phase();
    outline.ForEachPixel([&](int x, int y) { (((phase + x + y + 3) & 7) < 4 ? white : black).append(QPoint(x, y)); });
    painter.setPen(QPen(Qt::white, 0));
    painter.drawPoints(white);
    painter.setPen(QPen(Qt::black, 0));
    painter.drawPoints(black);
}

enum Overlay { kPlain = 0, kFloat = 1, kFloatOutline = 2 };

std::map<std::string, double>& PlainTimes() {
    static std::map<std::string, double> times;
    return times;
}

std::string ZoomName(int zoom) {
    std::string name = zoom >= 1 ? "x" : "1:";
    name += std::to_string(std::abs(zoom));
    return name;
}

void RenderView(benchmark::State& state, int zoom, int mode, Overlay overlay, bool grid) {
    EnsureBenchApplication();
    CDisplayRenderer renderer;
    renderer.SetDisplayMode(mode);
    renderer.SetZoom(zoom);
    renderer.SetPixelGrid(grid);
    const Floating& floating = FloatingPiece();
    // The view shows the floating piece's top-left part at high zoom.
    const ImageRect area = VisibleArea(zoom, zoom >= 4 ? 1000 : 0, zoom >= 4 ? 600 : 0);
    SelectionOutline outline;
    if (overlay == kFloatOutline) {
        outline.Build(floating.mask.get(), floating.x, floating.y, ViewportOf(area, zoom));
    }
    QImage screen(kViewWidth, kViewHeight, QImage::Format_RGB32);
    double total = 0.0;
    for (auto _ : state) {
        const double start = ThreadSeconds();
        QPainter painter(&screen);
        if (overlay == kPlain) {
            renderer.Bind(&Photo(), nullptr, nullptr, 0, 0);
        } else {
            renderer.Bind(&Photo(), floating.pixels.get(), floating.mask.get(), floating.x, floating.y);
        }
        renderer.Render(painter, area, QPoint(0, 0));
        renderer.Release();
        if (overlay == kFloatOutline) {
            PaintOutline(painter, outline);
        }
        painter.end();
        total += ThreadSeconds() - start;
    }
    const double ms = 1e3 * total / static_cast<double>(state.iterations());
    state.counters["ms"] = ms;
    const std::string key = std::to_string(zoom) + "/" + std::to_string(mode) + "/" + std::to_string(overlay);
    if (!grid) {
        PlainTimes()[key] = ms;
    } else if (PlainTimes().count(key) != 0) {
        state.counters["x_plain"] = ms / PlainTimes()[key];
    }
}

const char* ModeName(int mode) {
    return mode == CDisplayRenderer::kTrueColor ? "true" : mode == CDisplayRenderer::k65536Colors ? "65536" : "4096";
}

void RegisterRender(int zoom, int mode, Overlay overlay, bool grid) {
    static const char* overlayNames[] = {"plain", "float", "float+outline"};
    const std::string name = std::string("BM_Render/") + ZoomName(zoom) + "/" + ModeName(mode) + "/" +
                             overlayNames[overlay] + (grid ? "/grid" : "");
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        RenderView(state, zoom, mode, overlay, grid);
    })->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(0.1);
}

// One stroke of 100 segments across the picture at zoom 1; each segment saves
// its pixels into the painting step, paints, and repaints its rectangle.
void PenStroke(benchmark::State& state) {
    EnsureBenchApplication();
    CBriselDoc doc;
    doc.SetImage(CopyOfPhoto());
    CUndoHistory history;
    CDisplayRenderer renderer;
    renderer.SetDisplayMode(CDisplayRenderer::kTrueColor);
    BrushEngine brush;
    QImage screen(kViewWidth, kViewHeight, QImage::Format_RGB32);
    constexpr int kSegments = 100;
    double total = 0.0;
    int segments = 0;
    for (auto _ : state) {
        history.BeginCommand(doc, "Pen");
        history.RecordRegionWithWarning(doc);
        brush.SetTargetImage(doc.GetImage());
        brush.SetForegroundColor(0x0000FF);
        brush.SetBackgroundColor(0xFFFFFF);
        int lastX = 100;
        int lastY = 100;
        const double start = ThreadSeconds();
        for (int i = 1; i <= kSegments; ++i) {
            const int x = 100 + i * 17;
            const int y = 100 + (i % 2) * 9 + i * 8;
            const ImageRect touched{std::min(lastX, x) - 5, std::min(lastY, y) - 5, std::max(lastX, x) + 5,
                                    std::max(lastY, y) + 5};
            history.SaveRegion(doc, touched.left, touched.top, touched.right, touched.bottom);
            brush.Segment(lastX, lastY, x, y, 5, 2, 1);
            QPainter painter(&screen);
            renderer.SetZoom(1);
            renderer.Bind(doc);
            renderer.Render(painter, touched, QPoint(touched.left, touched.top));
            renderer.Release();
            lastX = x;
            lastY = y;
        }
        total += ThreadSeconds() - start;
        segments += kSegments;
        history.BeginCommand(doc, "Pen");
    }
    state.counters["ms_per_segment"] = 1e3 * total / segments;
}

// Scrolling by one screen: the whole view is repainted at the new place.
void ScrollOneScreen(benchmark::State& state, int zoom) {
    EnsureBenchApplication();
    CDisplayRenderer renderer;
    renderer.SetDisplayMode(CDisplayRenderer::kTrueColor);
    renderer.SetZoom(zoom);
    QImage screen(kViewWidth, kViewHeight, QImage::Format_RGB32);
    const ImageRect first = VisibleArea(zoom, 0, 0);
    const int step = first.bottom - first.top + 1;
    int y = 0;
    double total = 0.0;
    for (auto _ : state) {
        y = y + step + step > kHeight ? 0 : y + step;
        const double start = ThreadSeconds();
        QPainter painter(&screen);
        renderer.Bind(&Photo(), nullptr, nullptr, 0, 0);
        renderer.Render(painter, VisibleArea(zoom, 0, y), QPoint(0, 0));
        renderer.Release();
        painter.end();
        total += ThreadSeconds() - start;
    }
    state.counters["ms"] = 1e3 * total / static_cast<double>(state.iterations());
}

// A slider change in an adjustment dialog: the preview recomputes the picture
// from its source and the view (zoom 1, top-left) is repainted.
void Preview(benchmark::State& state, int kind) {
    EnsureBenchApplication();
    CBriselDoc doc;
    doc.SetImage(CopyOfPhoto());
    CUndoHistory history;
    CommandContext ctx{doc, history};
    CDisplayRenderer renderer;
    renderer.SetDisplayMode(CDisplayRenderer::kTrueColor);
    renderer.SetZoom(1);
    QImage screen(kViewWidth, kViewHeight, QImage::Format_RGB32);
    AdjustPreview preview(ctx);
    preview.Begin();
    AdjustSettings settings = AdjustSettings::Defaults(kind);
    int value = 0;
    double total = 0.0;
    double cpu = 0.0;
    for (auto _ : state) {
        value = value % 90 + 5;
        settings.first[0] = value;
        settings.second[0] = value / 2;
        const double start = ClockSeconds(CLOCK_MONOTONIC);
        const double cpuStart = ClockSeconds(CLOCK_PROCESS_CPUTIME_ID);
        preview.Apply(settings);
        QPainter painter(&screen);
        renderer.Bind(doc);
        renderer.Render(painter, VisibleArea(1, 0, 0), QPoint(0, 0));
        renderer.Release();
        painter.end();
        total += ClockSeconds(CLOCK_MONOTONIC) - start;
        cpu += ClockSeconds(CLOCK_PROCESS_CPUTIME_ID) - cpuStart;
    }
    preview.Cancel();
    state.counters["ms"] = 1e3 * total / static_cast<double>(state.iterations());
    state.counters["cpu_ms"] = 1e3 * cpu / static_cast<double>(state.iterations());
}

const bool kRegistered = [] {
    const int zooms[] = {-8, -7, -6, -5, -4, -3, -2, 1, 2, 3, 4, 5, 6, 7, 8, 16, 32};
    const int modes[] = {CDisplayRenderer::kTrueColor, CDisplayRenderer::k65536Colors,
                         CDisplayRenderer::k4096Colors};
    for (int zoom : zooms) {
        for (int mode : modes) {
            for (Overlay overlay : {kPlain, kFloat, kFloatOutline}) {
                RegisterRender(zoom, mode, overlay, false);
                if (zoom >= CDisplayRenderer::kGridZoom) {
                    RegisterRender(zoom, mode, overlay, true);
                }
            }
        }
    }
    benchmark::RegisterBenchmark("BM_Screen/PenSegment", PenStroke)->Unit(benchmark::kMillisecond)->UseRealTime();
    for (int zoom : {-4, 4}) {
        benchmark::RegisterBenchmark(("BM_Screen/ScrollOneScreen/" + ZoomName(zoom)).c_str(),
                                     [zoom](benchmark::State& state) { ScrollOneScreen(state, zoom); })
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
    benchmark::RegisterBenchmark("BM_Screen/PreviewBrightnessContrast",
                                 [](benchmark::State& state) { Preview(state, kAdjustBrightnessContrast); })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RegisterBenchmark("BM_Screen/PreviewHueSaturation",
                                 [](benchmark::State& state) { Preview(state, kAdjustHueSaturation); })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    return true;
}();

} // namespace
