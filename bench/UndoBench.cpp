// The undo history on a 4000 x 3000 picture: a 200-pixel pen stroke painted
// with and without its undo step (the step saves the pixels around each
// segment before it is painted, as the pen tool does), the memory of 100 such
// strokes, and Undo and Redo of a stroke and of a whole-picture filter, next
// to a memcpy of the picture.
#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/CommandContext.h"
#include "image/DibHelpers.h"
#include "ops/ImageCommands.h"
#include "paint/BrushEngine.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

namespace {

constexpr int kWidth = 4000;
constexpr int kHeight = 3000;
constexpr int kPen = 8;
constexpr int kReach = (kPen + 1) / 2 + 1;
constexpr int kStrokeLength = 200;
constexpr int kSampleStep = 4; // mouse samples along the stroke

struct Document {
    CBriselDoc doc;
    CUndoHistory history;
    Document() {
        BitmapInfoHeader header;
        InitDibHeader(header, kWidth, kHeight, 24, 72, 72);
        auto picture = std::make_unique<CDibImage>();
        picture->Create(&header, nullptr);
        for (int y = 0; y < kHeight; ++y) { // a photo-like picture: no two rows alike
            std::uint8_t* row = picture->RowData(y);
            for (int i = 0; i < kWidth * 3; ++i) {
                row[i] = static_cast<std::uint8_t>(i * 7 + y * 13);
            }
        }
        doc.SetPicture(std::move(picture));
        doc.SetMask(CreateMask(kWidth, kHeight, true));
    }
};

// One horizontal stroke from (x, y), painted segment by segment as the pen
// tool paints mouse moves; with `record`, each segment's area is saved first.
void Stroke(Document& d, BrushEngine& engine, int x, int y, bool record) {
    if (record) {
        d.history.RecordRegionWithWarning(d.doc);
        d.history.SaveRegion(d.doc, x - kReach, y - kReach, x + kReach, y + kReach);
    }
    engine.Dab(x, y, kPen, kShapeOval, kModeSolid);
    for (int step = kSampleStep; step <= kStrokeLength; step += kSampleStep) {
        const int from = x + step - kSampleStep;
        const int to = x + step;
        if (record) {
            d.history.SaveRegion(d.doc, from - kReach, y - kReach, to + kReach, y + kReach);
        }
        engine.Segment(from, y, to, y, kPen, kShapeOval, kModeSolid);
    }
    d.doc.SetModifiedFlag(); // pen-up
}

BrushEngine& EngineOn(Document& d) {
    static BrushEngine engine;
    engine.SetTargetImage(d.doc.GetPicture());
    engine.SetForegroundColor(0x2040C0);
    engine.BuildOvalTable(kPen);
    return engine;
}

void BM_UndoMemcpyPicture(benchmark::State& state) {
    Document d;
    auto target = DuplicateImage(d.doc.GetPicture());
    for (auto _ : state) {
        std::memcpy(target->RowData(kHeight - 1), d.doc.GetPicture()->RowData(kHeight - 1),
                    target->ImageBytes());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_UndoMemcpyPicture)->Unit(benchmark::kMillisecond);

// Argument 0: recording off; 1: each stroke is an undo step.
void BM_UndoPenStroke(benchmark::State& state) {
    Document d;
    BrushEngine& engine = EngineOn(d);
    const bool record = state.range(0) != 0;
    int row = 0;
    for (auto _ : state) {
        const int y = 100 + (row++ % 280) * 10;
        Stroke(d, engine, 1000, y, record);
        if (record) {
            d.history.BeginCommand(d.doc, "Pen");
        }
    }
    if (record) {
        const double box = (kStrokeLength + kPen) * kPen * 3.0;
        state.counters["step_over_box"] =
            static_cast<double>(d.history.Bytes()) / d.history.StepCount() / box;
    }
}
BENCHMARK(BM_UndoPenStroke)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void BM_UndoHundredStrokesMemory(benchmark::State& state) {
    for (auto _ : state) {
        Document d;
        BrushEngine& engine = EngineOn(d);
        for (int i = 0; i < 100; ++i) {
            Stroke(d, engine, 200 + (i * 337) % 3500, 50 + (i * 151) % 2900, true);
            d.history.BeginCommand(d.doc, "Pen");
        }
        state.counters["history_MB"] = static_cast<double>(d.history.Bytes()) / (1024.0 * 1024.0);
        state.counters["steps"] = d.history.StepCount();
    }
}
BENCHMARK(BM_UndoHundredStrokesMemory)->Iterations(1)->Unit(benchmark::kMillisecond);

// One Undo followed by one Redo of a pen stroke.
void BM_UndoRedoPenStroke(benchmark::State& state) {
    Document d;
    Stroke(d, EngineOn(d), 1000, 1500, true);
    d.history.BeginCommand(d.doc, "Pen");
    for (auto _ : state) {
        d.history.Undo(d.doc);
        d.history.Redo(d.doc);
    }
}
BENCHMARK(BM_UndoRedoPenStroke)->Unit(benchmark::kMicrosecond);

// One Undo followed by one Redo of Invert over the whole picture.
void BM_UndoRedoFilter(benchmark::State& state) {
    Document d;
    CommandContext context{d.doc, d.history};
    d.history.BeginCommand(d.doc, "Invert");
    RunImageCommand(context, kInvert);
    d.history.BeginCommand(d.doc, "Pen");
    for (auto _ : state) {
        d.history.Undo(d.doc);
        d.history.Redo(d.doc);
    }
}
BENCHMARK(BM_UndoRedoFilter)->Unit(benchmark::kMicrosecond);

} // namespace
