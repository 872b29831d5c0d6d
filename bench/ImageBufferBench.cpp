// Copy costs of a 4000 x 3000 24-bit picture against a plain memcpy of the same
// bytes (BM_MemcpyExisting). The ratio of the times is the figure that matters.
#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "platform/HeapBlock.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

constexpr int kWidth = 4000;
constexpr int kHeight = 3000;

const CDibImage& Fixture() {
    static const std::unique_ptr<CDibImage> picture = [] {
        BitmapInfoHeader header;
        InitDibHeader(header, kWidth, kHeight, 24, 72, 72);
        auto image = std::make_unique<CDibImage>();
        image->Create(&header, nullptr);
        auto row = platform::HeapBlock::Allocate(image->RowBytes());
        for (std::uint32_t i = 0; i < image->RowBytes(); ++i) {
            row.data()[i] = static_cast<std::uint8_t>(i * 31);
        }
        for (int y = 0; y < kHeight; ++y) {
            image->SetRow(y, row.data());
        }
        return image;
    }();
    return *picture;
}

void SetBytes(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

// Baseline for the undo snapshot: a fresh block and one memcpy of the pixels.
void BM_MemcpyIntoFreshBlock(benchmark::State& state) {
    const CDibImage& source = Fixture();
    for (auto _ : state) {
        void* block = std::malloc(source.ImageBytes());
        std::memcpy(block, source.Bits(), source.ImageBytes());
        benchmark::DoNotOptimize(block);
        std::free(block);
    }
    SetBytes(state, source.ImageBytes());
}
BENCHMARK(BM_MemcpyIntoFreshBlock)->Unit(benchmark::kMillisecond);

// The undo snapshot: a deep copy into a new image.
void BM_CopyFrom(benchmark::State& state) {
    const CDibImage& source = Fixture();
    for (auto _ : state) {
        CDibImage copy;
        copy.CopyFrom(source);
        benchmark::DoNotOptimize(copy.Bits());
    }
    SetBytes(state, source.ImageBytes());
}
BENCHMARK(BM_CopyFrom)->Unit(benchmark::kMillisecond);

// Baseline for the row pass: one memcpy between two existing pictures.
void BM_MemcpyExisting(benchmark::State& state) {
    const CDibImage& source = Fixture();
    auto target = DuplicateImage(&source);
    for (auto _ : state) {
        std::memcpy(const_cast<std::uint8_t*>(target->Bits()), source.Bits(), source.ImageBytes());
        benchmark::ClobberMemory();
    }
    SetBytes(state, source.ImageBytes());
}
BENCHMARK(BM_MemcpyExisting)->Unit(benchmark::kMillisecond);

// Every row read with GetRow into a row buffer and written back with SetRow:
// the access pattern of a filter that works row by row in place.
void BM_GetRowSetRowInPlace(benchmark::State& state) {
    auto picture = DuplicateImage(&Fixture());
    auto row = platform::HeapBlock::Allocate(picture->RowBytes());
    for (auto _ : state) {
        for (int y = 0; y < kHeight; ++y) {
            picture->GetRow(y, row.data());
            picture->SetRow(y, row.data());
        }
        benchmark::ClobberMemory();
    }
    SetBytes(state, picture->ImageBytes());
}
BENCHMARK(BM_GetRowSetRowInPlace)->Unit(benchmark::kMillisecond);

// Every row read with GetRow into a row buffer and written with SetRow into a
// second picture.
void BM_GetRowSetRowPass(benchmark::State& state) {
    const CDibImage& source = Fixture();
    auto target = DuplicateImage(&source);
    auto row = platform::HeapBlock::Allocate(source.RowBytes());
    for (auto _ : state) {
        for (int y = 0; y < kHeight; ++y) {
            source.GetRow(y, row.data());
            target->SetRow(y, row.data());
        }
        benchmark::ClobberMemory();
    }
    SetBytes(state, source.ImageBytes());
}
BENCHMARK(BM_GetRowSetRowPass)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
