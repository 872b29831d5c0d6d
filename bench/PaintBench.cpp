// Painting and selection engines on a 4000 x 3000 picture: flood fill and the
// wand's connected walk over a uniform picture (12 million pixels, about 50
// chunks of the direction stack), every gradient shape against a memcpy of
// the picture, and strokes of 1,000 segments of a 32-pixel oval pen in every
// draw mode (mode 13 is the clone stamp, to be compared with the pen's mode 1).
#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "paint/BrushEngine.h"
#include "paint/FloodFill.h"
#include "paint/GradientRamp.h"
#include "selection/MagicWand.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

namespace {

constexpr int kWidth = 4000;
constexpr int kHeight = 3000;
constexpr std::int64_t kPixels = static_cast<std::int64_t>(kWidth) * kHeight;

std::unique_ptr<CDibImage> Picture(ColorWord color) {
    BitmapInfoHeader header;
    InitDibHeader(header, kWidth, kHeight, 24, 72, 72);
    auto image = std::make_unique<CDibImage>();
    image->Create(&header, nullptr);
    image->Clear(color);
    return image;
}

void BM_PaintMemcpyPicture(benchmark::State& state) {
    auto source = Picture(0x336699);
    auto target = Picture(0);
    for (auto _ : state) {
        std::memcpy(target->RowData(kHeight - 1), source->RowData(kHeight - 1), source->ImageBytes());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPixels);
}
BENCHMARK(BM_PaintMemcpyPicture)->Unit(benchmark::kMillisecond);

// Each pass fills the whole picture with the other colour, so every pass
// walks all 12 million pixels.
void BM_FloodFillUniform(benchmark::State& state) {
    auto image = Picture(0xFFFFFF);
    bool red = true;
    for (auto _ : state) {
        FloodFill(*image, kWidth / 2, kHeight / 2, red ? 0x0000FF : 0xFFFFFF, 0);
        red = !red;
    }
    state.SetItemsProcessed(state.iterations() * kPixels);
}
BENCHMARK(BM_FloodFillUniform)->Unit(benchmark::kMillisecond);

// Alternately selects and deselects the whole picture with the connected walk.
void BM_WandContinuousUniform(benchmark::State& state) {
    auto image = Picture(0x808080);
    auto mask = CreateMask(kWidth, kHeight, true);
    int mark = 1;
    for (auto _ : state) {
        MarkWandArea(*image, *mask, 10, 10, 32, true, mark);
        mark = 1 - mark;
    }
    state.SetItemsProcessed(state.iterations() * kPixels);
}
BENCHMARK(BM_WandContinuousUniform)->Unit(benchmark::kMillisecond);

void BM_Gradient(benchmark::State& state) {
    auto image = Picture(0);
    GradientRamp ramp;
    ramp.SetShape(static_cast<int>(state.range(0)));
    ramp.SetColorMode(GradientRamp::kRgb);
    ramp.SetColors(0x0020F0, 0xF02000);
    for (auto _ : state) {
        ramp.Render(*image, 1300, 1100, 2900, 2300);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kPixels);
}
BENCHMARK(BM_Gradient)->ArgName("shape")->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

// A zig-zag path of 1,000 segments across the picture, most about 70 pixels
// long, with a long jump back whenever it reaches an edge.
void BM_StrokeSegments(benchmark::State& state) {
    const int mode = static_cast<int>(state.range(0));
    auto image = Picture(0xC0C0C0);
    auto reference = Picture(0xC0C0C0);
    BrushEngine engine;
    engine.SetTargetImage(image.get());
    engine.SetReferenceImage(reference.get());
    engine.SetForegroundColor(0x2040A0);
    engine.SetBackgroundColor(0xFFFFFF);
    engine.ComputeForegroundHue(0xA0, 0x40, 0x20);
    engine.SetColorMatchBounds(40, 40, 40);
    engine.SetWashOpacity(96);
    engine.SetGrain(128, 2);
    engine.SetSpeckle(128, 32, 2);
    engine.SetCloneOffset(150, 90);
    engine.BuildOvalTable(32);
    for (auto _ : state) {
        int x = 100;
        int y = 100;
        for (int i = 0; i < 1000; ++i) {
            const int nx = 100 + (x + 47) % 3800;
            const int ny = 100 + (i * 53 + (i % 7) * 11) % 2800;
            engine.Segment(x, y, nx, ny, 32, kShapeOval, mode);
            x = nx;
            y = ny;
        }
    }
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(BM_StrokeSegments)
    ->ArgName("mode")
    ->Arg(1)
    ->Arg(2)
    ->Arg(3)
    ->Arg(4)
    ->Arg(5)
    ->Arg(6)
    ->Arg(7)
    ->Arg(8)
    ->Arg(11)
    ->Arg(12)
    ->Arg(13)
    ->Unit(benchmark::kMillisecond);

} // namespace
