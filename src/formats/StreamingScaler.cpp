#include "formats/StreamingScaler.h"

#include "formats/FileResult.h"
#include "ops/RowResampler.h"
#include "image/CDibImage.h"
#include "platform/HeapBlock.h"

#include <cstring>

using platform::HeapBlock;

namespace {
// The picture row (counted from the top) that the n-th output row fills.
int OutputRow(int n, int height, bool topRowFirst) {
    return topRowFirst ? n : height - 1 - n;
}
} // namespace

int StreamingScaler::CopyRows(int sourceHeight, CDibImage& picture, const RowFetcher& fetchRow,
                              bool topRowFirst) {
    HeapBlock row = HeapBlock::Allocate(picture.RowBytes());
    if (!row) {
        return kFileOutOfMemory;
    }
    const int height = picture.Height();
    for (int stored = 0; stored < sourceHeight && stored < height; ++stored) {
        if (!fetchRow(row.data())) {
            return kFileFailed;
        }
        picture.SetRow(OutputRow(stored, height, topRowFirst), row.data());
    }
    return kFileOk;
}

int StreamingScaler::Run(int sourceWidth, int sourceHeight, CDibImage& picture, const RowFetcher& fetchRow,
                         bool topRowFirst) {
    const int width = picture.Width();
    const int height = picture.Height();
    if (sourceWidth == width && sourceHeight == height) {
        return CopyRows(sourceHeight, picture, fetchRow, topRowFirst);
    }
    const std::size_t outBytes = static_cast<std::size_t>(width) * 3;
    HeapBlock sourceRow =
        HeapBlock::Allocate((static_cast<std::size_t>(sourceWidth) * 3 + 3) & ~std::size_t{3});
    HeapBlock outRow = HeapBlock::Allocate(picture.RowBytes());
    HeapBlock sums = HeapBlock::Allocate(outBytes * sizeof(std::uint64_t));
    RowResampler resampler(sourceWidth, width);
    if (!sourceRow || !outRow || !sums || !resampler.IsValid()) {
        return kFileOutOfMemory;
    }
    auto* sum = reinterpret_cast<std::uint64_t*>(sums.data());
    std::uint8_t* out = outRow.data();
    // The resampled row is built in place in the output row, then averaged
    // with the rows accumulated before it.
    std::int64_t counter = sourceHeight / 2;
    std::uint64_t accumulated = 0;
    int stored = 0;
    for (int source = 0; source < sourceHeight && stored < height; ++source) {
        if (!fetchRow(sourceRow.data())) {
            return kFileFailed;
        }
        resampler.Resample(sourceRow.data(), out);
        counter += height;
        if (counter < sourceHeight && source != sourceHeight - 1) {
            for (std::size_t i = 0; i < outBytes; ++i) {
                sum[i] += out[i];
            }
            ++accumulated;
            continue;
        }
        for (std::size_t i = 0; i < outBytes; ++i) {
            out[i] = static_cast<std::uint8_t>((sum[i] + out[i]) / (accumulated + 1));
        }
        std::memset(sum, 0, outBytes * sizeof(std::uint64_t));
        accumulated = 0;
        counter -= sourceHeight;
        picture.SetRow(OutputRow(stored, height, topRowFirst), out);
        ++stored;
    }
    return kFileOk;
}
