#include "formats/JpegLoader.h"

#include "formats/CJpegReader.h"
#include "formats/FileResult.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"

namespace {
// A picture side is a signed 16-bit value.
constexpr int kLargestSide = 32767;

bool CreatePicture(CDibImage& picture, int width, int height) {
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
    if (!CreatePicture(picture, width, height)) {
        reader.Close();
        if (!reader.Open(path, width / 2, height / 2, fileWidth, fileHeight, width, height) ||
            !CreatePicture(picture, width, height)) {
            return kFileFailed;
        }
    }
    // Rows arrive top first; the picture's rows are addressed from the top.
    platform::HeapBlock row = platform::HeapBlock::Allocate(picture.RowBytes());
    if (!row) {
        return kFileOutOfMemory;
    }
    for (int y = 0; y < picture.Height(); ++y) {
        if (!reader.ReadRow(row.data())) {
            return kFileFailed;
        }
        picture.SetRow(y, row.data());
    }
    reader.Close();
    return kFileOk;
}
