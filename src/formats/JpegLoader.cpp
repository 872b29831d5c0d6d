#include "formats/JpegLoader.h"

#include "formats/BmpLoader.h"
#include "formats/CJpegReader.h"
#include "formats/ExifOrientation.h"
#include "formats/FileResult.h"
#include "formats/StreamingScaler.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"

#include <utility>

namespace {
constexpr int kLargestSide = LoadLimits::kLargestSide;

// The picture for rows of width x height, fitted into `box` (the limits in
// the file's stored orientation) when even the smallest decoding scale did
// not reach it.
bool CreatePicture(CDibImage& picture, const LoadLimitSize& box, int rowsWide, int rowsHigh) {
    const LoadLimitSize size = FitBmpSize(rowsWide, rowsHigh, box.width, box.height);
    BitmapInfoHeader header;
    InitDibHeader(header, size.width, size.height, 24, 72, 72);
    return size.width > 0 && size.height > 0 && size.width <= kLargestSide && size.height <= kLargestSide &&
           picture.Create(&header, nullptr) != 0;
}

LoadLimitSize StoredBox(const LoadLimitSize& upright, int orientation) {
    return exif::SwapsSides(orientation) ? LoadLimitSize{upright.height, upright.width} : upright;
}
} // namespace

int LoadJpegPicture(const std::string& path, const LoadLimitSize& limits, std::unique_ptr<CDibImage>& picture,
                    int& fileWidth, int& fileHeight) {
    CJpegReader reader;
    int width = 0;
    int height = 0;
    auto stored = std::make_unique<CDibImage>();
    if (!reader.Open(path, limits.width, limits.height, fileWidth, fileHeight, width, height)) {
        return kFileFailed;
    }
    const int orientation = reader.Orientation();
    if (!CreatePicture(*stored, StoredBox(limits, orientation), width, height)) {
        reader.Close();
        // Half the size the rows had, in the file's orientation.
        const LoadLimitSize halved{width / 2, height / 2};
        const LoadLimitSize upright = StoredBox(halved, orientation);
        if (!reader.Open(path, upright.width, upright.height, fileWidth, fileHeight, width, height) ||
            !CreatePicture(*stored, halved, width, height)) {
            return kFileFailed;
        }
    }
    if (exif::SwapsSides(orientation)) {
        std::swap(fileWidth, fileHeight);
    }
    // Rows arrive top first. Only a file too large even at 1/8 scale comes
    // out bigger than the picture; the streaming scaler shrinks the rest.
    const int result = StreamingScaler::Run(
        width, height, *stored, [&reader](std::uint8_t* row) { return reader.ReadRow(row) != 0; }, true);
    reader.Close();
    if (result != kFileOk) {
        return result;
    }
    const int upright = exif::MakeUpright(stored, orientation);
    if (upright == kFileOk) {
        picture = std::move(stored);
    }
    return upright;
}
