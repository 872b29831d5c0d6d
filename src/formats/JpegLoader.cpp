#include "formats/JpegLoader.h"

#include "formats/BmpLoader.h"
#include "formats/CJpegReader.h"
#include "formats/FileResult.h"
#include "formats/StreamingScaler.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"

namespace {
// A picture side is a signed 16-bit value.
constexpr int kLargestSide = 32767;

// The picture for rows of width x height, fitted into `limits` when even the
// smallest decoding scale did not reach them.
bool CreatePicture(CDibImage& picture, const LoadLimitSize& limits, int rowsWide, int rowsHigh) {
    const LoadLimitSize size = FitBmpSize(rowsWide, rowsHigh, limits.width, limits.height);
    const int width = size.width;
    const int height = size.height;
    BitmapInfoHeader header;
    InitDibHeader(header, width, height, 24, 72, 72);
    return width > 0 && height > 0 && width <= kLargestSide && height <= kLargestSide &&
           picture.Create(&header, nullptr) != 0;
}
} // namespace

int LoadJpegPicture(const std::string& path, const LoadLimitSize& limits, CDibImage& picture, int& fileWidth,
                    int& fileHeight) {
    CJpegReader reader;
    int width = 0;
    int height = 0;
    if (!reader.Open(path, limits.width, limits.height, fileWidth, fileHeight, width, height)) {
        return kFileFailed;
    }
    if (!CreatePicture(picture, limits, width, height)) {
        reader.Close();
        const LoadLimitSize halved{width / 2, height / 2};
        if (!reader.Open(path, halved.width, halved.height, fileWidth, fileHeight, width, height) ||
            !CreatePicture(picture, halved, width, height)) {
            return kFileFailed;
        }
    }
    // Rows arrive top first. Only a file too large even at 1/8 scale comes
    // out bigger than the picture; the streaming scaler shrinks the rest.
    const int result = StreamingScaler::Run(
        width, height, picture, [&reader](std::uint8_t* row) { return reader.ReadRow(row) != 0; }, true);
    reader.Close();
    return result;
}
