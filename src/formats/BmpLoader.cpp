#include "formats/BmpLoader.h"

#include "formats/CBmpReader.h"
#include "formats/DecodeBudget.h"
#include "formats/FileResult.h"
#include "formats/StreamingScaler.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"

#include <algorithm>
#include <cstdint>

namespace {
constexpr int kLargestSide = LoadLimits::kLargestSide;

int Scale(std::int64_t value, std::int64_t numerator, std::int64_t denominator) {
    return static_cast<int>(std::max<std::int64_t>(1, (value * numerator + denominator / 2) / denominator));
}

bool CreatePicture(CDibImage& picture, int width, int height) {
    BitmapInfoHeader header;
    InitDibHeader(header, width, height, 24, 72, 72);
    return width > 0 && height > 0 && picture.Create(&header, nullptr) != 0;
}
} // namespace

LoadLimitSize FitBmpSize(int width, int height, int boxWidth, int boxHeight) {
    if (width > boxWidth) {
        const int candidate = Scale(height, boxWidth, width);
        if (candidate <= boxHeight) {
            return {boxWidth, candidate};
        }
        return {Scale(width, boxHeight, height), boxHeight};
    }
    if (height > boxHeight) {
        return {Scale(width, boxHeight, height), boxHeight};
    }
    return {width, height};
}

int LoadBmpPicture(const std::string& path, const LoadLimitSize& limits, CDibImage& picture, int& fileWidth,
                   int& fileHeight, bool* transparent) {
    CBmpReader reader;
    BmpFormat format;
    if (!reader.Open(path, format)) {
        return reader.OutOfMemory() ? kFileOutOfMemory : kFileFailed;
    }
    if (reader.IsRunLength() && !decode_budget::IsPlausible(static_cast<std::uint64_t>(format.width),
                                                            static_cast<std::uint64_t>(format.height),
                                                            reader.FileSize(),
                                                            decode_budget::kRunLengthDensity)) {
        return kFileFailed;
    }
    fileWidth = format.width;
    fileHeight = format.height;
    const LoadLimitSize size = FitBmpSize(format.width, format.height, std::min(2 * limits.width, kLargestSide),
                                          std::min(2 * limits.height, kLargestSide));
    if (!CreatePicture(picture, size.width, size.height) &&
        !CreatePicture(picture, size.width / 2, size.height / 2)) {
        return kFileOutOfMemory;
    }
    const int result = StreamingScaler::Run(
        format.width, format.height, picture, [&reader](std::uint8_t* row) { return reader.ReadRow(row); },
        format.topDown);
    if (transparent != nullptr) {
        *transparent = reader.SawTransparency();
    }
    return result;
}
