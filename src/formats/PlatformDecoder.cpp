#include "formats/PlatformDecoder.h"

#include "formats/FileResult.h"
#include "formats/InputFile.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"

#include <QImage>
#include <QImageIOHandler>
#include <QImageReader>

namespace {
constexpr int kLargestSide = 10000;
// Enough for a 10000 x 10000 picture at 4 bytes per pixel, with room to spare.
constexpr int kAllocationLimitMegabytes = 1024;

QImage Decode(const std::string& path) {
    QImageReader::setAllocationLimit(kAllocationLimitMegabytes);
    QImageReader reader(QString::fromStdString(path));
    reader.setAutoTransform(false);
    const QSize size = reader.size();
    // A header that declares an empty picture (a GIF screen of width 0, say)
    // is broken; decoding it anyway can mean building a huge empty image.
    if (!size.isValid() && reader.supportsOption(QImageIOHandler::Size)) {
        return QImage();
    }
    QSize expected = size;
    if (size.isValid() && (size.width() > kLargestSide || size.height() > kLargestSide)) {
        expected = size.scaled(kLargestSide, kLargestSide, Qt::KeepAspectRatio);
        reader.setScaledSize(expected);
    }
    QImage image = reader.read();
    // A picture larger than its header said (a GIF whose screen is wider
    // than its image, say) is refused rather than kept at an unchecked size.
    if (expected.isValid() && image.size() != expected) {
        return QImage();
    }
    return image;
}

// Premultiplied pixels laid over white: each channel plus what the alpha leaves.
void OverWhite(const QImage& image, int y, std::uint8_t* row) {
    const auto* pixel = reinterpret_cast<const std::uint8_t*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x, pixel += 4, row += 3) {
        const int rest = 255 - pixel[3];
        row[0] = static_cast<std::uint8_t>(pixel[0] + rest);
        row[1] = static_cast<std::uint8_t>(pixel[1] + rest);
        row[2] = static_cast<std::uint8_t>(pixel[2] + rest);
    }
}
} // namespace

int LoadWithPlatformDecoder(const std::string& path, CDibImage& picture, int& fileWidth, int& fileHeight) {
    if (!InputFile::IsRegularFile(path)) {
        return kFileFailed;
    }
    const QImage decoded = Decode(path);
    if (decoded.isNull()) {
        return kFileFailed;
    }
    // Premultiplied ARGB32 is blue, green, red, alpha in memory on the
    // little-endian machines the program runs on.
    const QImage image = decoded.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) {
        return kFileOutOfMemory;
    }
    fileWidth = image.width();
    fileHeight = image.height();
    BitmapInfoHeader header;
    InitDibHeader(header, image.width(), image.height(), 24, 0, 0);
    if (!picture.Create(&header, nullptr)) {
        return kFileOutOfMemory;
    }
    platform::HeapBlock row = platform::HeapBlock::Allocate(picture.RowBytes());
    if (!row) {
        return kFileOutOfMemory;
    }
    for (int y = 0; y < image.height(); ++y) {
        OverWhite(image, y, row.data());
        picture.SetRow(y, row.data());
    }
    return kFileOk;
}
