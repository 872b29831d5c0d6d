#include "formats/StreamingScaler.h"

#include "formats/FileResult.h"
#include "ops/RowResampler.h"
#include "image/CDibImage.h"
#include "platform/HeapBlock.h"

#include <algorithm>
#include <cstring>

using platform::HeapBlock;

namespace {
// The picture row (counted from the top) that the n-th output row fills.
int OutputRow(int n, int height, bool topRowFirst) {
    return topRowFirst ? n : height - 1 - n;
}

// Source rows are spread over output rows with a counter: each source row
// adds the output height, and the row that takes it to the source height or
// beyond (or the last source row) completes an output row, which then takes
// the source height off again.
struct VerticalSpread {
    std::int64_t sourceHeight;
    std::int64_t height;
    std::int64_t counter;

    // How many of the next `run` source rows (starting at `source`) go by up
    // to and including the one that completes an output row, and whether one
    // does within the run. Divides only when one does.
    std::int64_t StepsToOutput(std::int64_t source, std::int64_t run, bool& completes) const {
        const std::int64_t toLast = sourceHeight - source;
        completes = counter + run * height >= sourceHeight || run >= toLast;
        if (!completes) {
            return run;
        }
        const std::int64_t needed = std::max<std::int64_t>(1, (sourceHeight - counter + height - 1) / height);
        return std::min(needed, toLast);
    }
};

void AddRow(std::uint64_t* sum, const std::uint8_t* row, std::size_t bytes, std::int64_t times) {
    if (times == 1) {
        for (std::size_t i = 0; i < bytes; ++i) {
            sum[i] += row[i];
        }
        return;
    }
    const auto factor = static_cast<std::uint64_t>(times);
    for (std::size_t i = 0; i < bytes; ++i) {
        sum[i] += row[i] * factor;
    }
}
} // namespace

int StreamingScaler::CopyRows(int sourceHeight, CDibImage& picture, const RowFetcher& fetchRow,
                              bool topRowFirst) {
    HeapBlock row = HeapBlock::Allocate(picture.RowBytes());
    if (!row) {
        return kFileOutOfMemory;
    }
    const int height = picture.Height();
    for (int stored = 0; stored < sourceHeight && stored < height;) {
        const int run = fetchRow(row.data());
        if (run <= 0) {
            return kFileFailed;
        }
        for (const int end = std::min(stored + run, height); stored < end; ++stored) {
            picture.SetRow(OutputRow(stored, height, topRowFirst), row.data());
        }
    }
    return kFileOk;
}

int StreamingScaler::Run(int sourceWidth, int sourceHeight, CDibImage& picture, const RowFetcher& fetchRow,
                         bool topRowFirst) {
    if (sourceWidth == picture.Width() && sourceHeight == picture.Height()) {
        return CopyRows(sourceHeight, picture, fetchRow, topRowFirst);
    }
    return ShrinkRows(sourceWidth, sourceHeight, picture, fetchRow, topRowFirst);
}

int StreamingScaler::ShrinkRows(int sourceWidth, int sourceHeight, CDibImage& picture, const RowFetcher& fetchRow,
                                bool topRowFirst) {
    const int width = picture.Width();
    const int height = picture.Height();
    const std::size_t outBytes = static_cast<std::size_t>(width) * 3;
    HeapBlock sourceRow =
        HeapBlock::Allocate((static_cast<std::size_t>(sourceWidth) * 3 + 3) & ~std::size_t{3});
    HeapBlock resampledRow = HeapBlock::Allocate(picture.RowBytes());
    HeapBlock outRow = HeapBlock::Allocate(picture.RowBytes());
    HeapBlock sums = HeapBlock::Allocate(outBytes * sizeof(std::uint64_t));
    RowResampler resampler(sourceWidth, width);
    if (!sourceRow || !resampledRow || !outRow || !sums || !resampler.IsValid()) {
        return kFileOutOfMemory;
    }
    auto* sum = reinterpret_cast<std::uint64_t*>(sums.data());
    const std::uint8_t* resampled = resampledRow.data();
    std::uint8_t* out = outRow.data();
    VerticalSpread spread{sourceHeight, height, sourceHeight / 2};
    std::uint64_t accumulated = 0;
    int stored = 0;
    for (std::int64_t source = 0; source < sourceHeight && stored < height;) {
        std::int64_t run = fetchRow(sourceRow.data());
        if (run <= 0) {
            return kFileFailed;
        }
        resampler.Resample(sourceRow.data(), resampledRow.data());
        while (run > 0 && source < sourceHeight && stored < height) {
            bool completes = false;
            const std::int64_t steps = spread.StepsToOutput(source, run, completes);
            const std::int64_t added = completes ? steps - 1 : steps;
            if (added > 0) {
                AddRow(sum, resampled, outBytes, added);
                accumulated += static_cast<std::uint64_t>(added);
            }
            spread.counter += steps * height;
            source += steps;
            run -= steps;
            if (!completes) {
                continue;
            }
            for (std::size_t i = 0; i < outBytes; ++i) {
                out[i] = static_cast<std::uint8_t>((sum[i] + resampled[i]) / (accumulated + 1));
            }
            std::memset(sum, 0, outBytes * sizeof(std::uint64_t));
            accumulated = 0;
            spread.counter -= sourceHeight;
            picture.SetRow(OutputRow(stored, height, topRowFirst), out);
            ++stored;
        }
    }
    return kFileOk;
}
