// Image operations on a 4000 x 3000 picture. Each benchmark also reports
// "x_memcpy": its time per run divided by the time of one memcpy of the
// picture's bytes between two existing pictures, measured in the same process.
#include "BenchPictures.h"
#include "ops/CColorAdjuster.h"
#include "ops/CImageFilter.h"
#include "ops/CImageTransform.h"
#include "ops/ImageRescaler.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <functional>
#include <memory>
#include <string>

#include <time.h>

namespace {

constexpr int kWidth = 4000;
constexpr int kHeight = 3000;

const CDibImage& Photo() {
    static const std::unique_ptr<CDibImage> picture = NewPhoto(kWidth, kHeight);
    return *picture;
}

// CPU time of all the process's threads, which a busy machine distorts less
// than the wall clock.
double ProcessCpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

double Seconds(std::chrono::steady_clock::duration d) {
    return std::chrono::duration<double>(d).count();
}

// Fastest of several memcpys of the picture between two existing pictures.
double MemcpySeconds() {
    static const double seconds = [] {
        const CDibImage& source = Photo();
        auto target = NewPicture(kWidth, kHeight);
        double best = 1e9;
        for (int i = 0; i < 8; ++i) {
            const auto start = std::chrono::steady_clock::now();
            std::memcpy(target->MutableBits(), source.Bits(), source.ImageBytes());
            benchmark::ClobberMemory();
            best = std::min(best, Seconds(std::chrono::steady_clock::now() - start));
        }
        return best;
    }();
    return seconds;
}

using Operation = std::function<void(const CDibImage& source, CDibImage& target)>;

void RunOperation(benchmark::State& state, const Operation& operation, int targetWidth, int targetHeight) {
    const CDibImage& source = Photo();
    auto target = NewPicture(targetWidth, targetHeight);
    const double baseline = MemcpySeconds();
    double total = 0.0;
    double cpu = 0.0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        const double cpuStart = ProcessCpuSeconds();
        operation(source, *target);
        benchmark::ClobberMemory();
        cpu += ProcessCpuSeconds() - cpuStart;
        total += Seconds(std::chrono::steady_clock::now() - start);
    }
    const auto runs = static_cast<double>(state.iterations());
    state.counters["x_memcpy"] = total / runs / baseline;
    state.counters["cpu_ms"] = 1e3 * cpu / runs;
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * source.ImageBytes());
}

void Register(const std::string& name, const Operation& operation, int width = kWidth, int height = kHeight) {
    benchmark::RegisterBenchmark(
        ("BM_Ops/" + name).c_str(),
        [=](benchmark::State& state) { RunOperation(state, operation, width, height); })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

Operation Filter(const std::function<int(CImageFilter&)>& run) {
    return [run](const CDibImage& source, CDibImage& target) {
        CImageFilter filter;
        filter.SetTarget(&target);
        filter.SetSource(&source);
        run(filter);
    };
}

Operation Adjust(const std::function<int(CColorAdjuster&)>& run) {
    return [run](const CDibImage& source, CDibImage& target) {
        CColorAdjuster adjuster;
        adjuster.SetTarget(&target);
        adjuster.SetSource(&source);
        run(adjuster);
    };
}

Operation Transform(const std::function<int(CImageTransform&)>& run) {
    return [run](const CDibImage& source, CDibImage& target) {
        CImageTransform transform;
        transform.SetTarget(&target);
        transform.SetSource(&source);
        run(transform);
    };
}

const bool kRegistered = [] {
    Register("memcpy", [](const CDibImage& source, CDibImage& target) {
        std::memcpy(target.MutableBits(), source.Bits(), source.ImageBytes());
    });
    // Point operations.
    Register("Invert", Filter([](CImageFilter& f) { return f.Invert(); }));
    Register("Gray", Filter([](CImageFilter& f) { return f.Gray(); }));
    Register("ColorLevel", Filter([](CImageFilter& f) { return f.ColorLevel(28, 0, 0); }));
    Register("ColorTone", Filter([](CImageFilter& f) { return f.ColorTone(25); }));
    Register("BrightnessContrast", Adjust([](CColorAdjuster& a) {
                 a.BuildBrightnessContrast(20, 20, 20, 30, 30, 30);
                 return a.ApplyTables();
             }));
    Register("Gamma", Adjust([](CColorAdjuster& a) {
                 a.BuildGamma(14, 14, 14);
                 return a.ApplyTables();
             }));
    Register("HueSaturation", Adjust([](CColorAdjuster& a) { return a.ApplyHueSaturation(40, 20); }));
    // Neighbourhood and cell filters.
    const char* convolveNames[] = {"BlurSmall",    "BlurMore",    "BlurLarge",
                                   "SharpenSmall", "SharpenMore", "SharpenLarge"};
    for (int strength = 1; strength <= 6; ++strength) {
        Register(convolveNames[strength - 1],
                 Filter([strength](CImageFilter& f) { return f.Convolve3x3(strength); }));
    }
    Register("Diffuse", Filter([](CImageFilter& f) { return f.Diffuse(); }));
    Register("Despeckle", Filter([](CImageFilter& f) { return f.Despeckle(64); }));
    Register("Emboss", Filter([](CImageFilter& f) { return f.Emboss(0, 2, 0x808080); }));
    Register("FindEdge", Filter([](CImageFilter& f) { return f.FindEdge(1, 1, 0, 0xFFFFFF); }));
    Register("TraceContour",
             Filter([](CImageFilter& f) { return f.TraceContour(0, 0, 1, 0, 0xFFFFFF, 0xFF0000); }));
    Register("Mosaic", Filter([](CImageFilter& f) { return f.Mosaic(4); }));
    Register("Average", Filter([](CImageFilter& f) { return f.Average(4); }));
    // Geometry.
    Register("FlipHorizontal", Transform([](CImageTransform& t) { return t.FlipHorizontal(); }));
    Register("FlipVertical", Transform([](CImageTransform& t) { return t.FlipVertical(); }));
    Register("RotateLeft", Transform([](CImageTransform& t) { return t.RotateLeft(); }), kHeight, kWidth);
    Register("RotateRight", Transform([](CImageTransform& t) { return t.RotateRight(); }), kHeight, kWidth);
    int turnedWidth = 0;
    int turnedHeight = 0;
    CImageTransform::RotatedSize(kWidth, kHeight, 30.0f, turnedWidth, turnedHeight);
    Register("Rotate30", Transform([](CImageTransform& t) { return t.RotateByAngle(30.0f, true); }),
             turnedWidth, turnedHeight);
    Register(
        "RescaleHalf", [](const CDibImage& s, CDibImage& t) { ops::RescalePicture(s, t); }, kWidth / 2,
        kHeight / 2);
    Register(
        "RescaleUp1_5", [](const CDibImage& s, CDibImage& t) { ops::RescalePicture(s, t); }, kWidth * 3 / 2,
        kHeight * 3 / 2);
    return true;
}();

} // namespace
