#include "formats/PlatformDecoder.h"

#include "formats/BmpLoader.h"
#include "formats/DecodeBudget.h"
#include "formats/FileResult.h"
#include "formats/InputFile.h"
#include "formats/StreamingScaler.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"

#include <QFileInfo>
#include <QImage>
#include <QImageIOHandler>
#include <QImageReader>

#include <algorithm>
#include <cstring>

namespace {
constexpr int kLargestSide = LoadLimits::kLargestSide;
// Qt's readers need a little more than the picture itself (palettes, rows).
constexpr std::uint64_t kSpareMegabytes = 64;

// The largest file the decoder accepts: twice the limits each way.
QSize LargestFile(const LoadLimitSize& limits) {
    return QSize(std::min(2 * limits.width, kLargestSide), std::min(2 * limits.height, kLargestSide));
}

void SetAllocationLimit(const QSize& largest) {
    const std::uint64_t bytes =
        static_cast<std::uint64_t>(largest.width()) * static_cast<std::uint64_t>(largest.height()) * 4;
    const std::uint64_t megabytes = (bytes >> 20) + kSpareMegabytes;
    QImageReader::setAllocationLimit(static_cast<int>(std::min<std::uint64_t>(megabytes, 1u << 30)));
}

QImage Decode(const std::string& path, const LoadLimitSize& limits) {
    const QSize largest = LargestFile(limits);
    SetAllocationLimit(largest);
    QImageReader reader(QString::fromStdString(path));
    reader.setAutoTransform(false);
    const QSize size = reader.size();
    // A header that declares an empty picture (a GIF screen of width 0, say)
    // is broken; decoding it anyway can mean building a huge empty image.
    if (!size.isValid() && reader.supportsOption(QImageIOHandler::Size)) {
        return QImage();
    }
    if (size.isValid()) {
        const auto fileBytes = static_cast<std::uint64_t>(QFileInfo(reader.fileName()).size());
        if (size.width() > largest.width() || size.height() > largest.height() ||
            !decode_budget::IsPlausible(static_cast<std::uint64_t>(size.width()),
                                        static_cast<std::uint64_t>(size.height()), fileBytes)) {
            return QImage();
        }
    }
    QImage image = reader.read();
    // A picture larger than its header said (a GIF whose screen is wider
    // than its image, say) is refused rather than kept at an unchecked size.
    if (image.isNull() || (size.isValid() && image.size() != size) || image.width() > largest.width() ||
        image.height() > largest.height()) {
        return QImage();
    }
    return image;
}

// Premultiplied pixels laid over white: each channel plus what the alpha
// leaves. Returns the AND of the row's alphas: 255 when all are opaque.
std::uint8_t OverWhite(const std::uint8_t* pixel, int width, std::uint8_t* row) {
    std::uint8_t opaque = 255;
    for (int x = 0; x < width; ++x, pixel += 4, row += 3) {
        const int rest = 255 - pixel[3];
        opaque &= pixel[3];
        row[0] = static_cast<std::uint8_t>(pixel[0] + rest);
        row[1] = static_cast<std::uint8_t>(pixel[1] + rest);
        row[2] = static_cast<std::uint8_t>(pixel[2] + rest);
    }
    return opaque;
}

// Hands out the decoded rows top first as 24-bit pixels over white,
// converting a band of rows at a time so that no second full-size copy of
// the decoded picture is made.
class DecodedRows {
public:
    explicit DecodedRows(const QImage& image) : m_image(image) {}

    bool Next(std::uint8_t* row) {
        if (m_y >= m_image.height()) {
            return false;
        }
        const int inBand = m_y % kBandRows;
        if (inBand == 0) {
            const int rows = std::min(kBandRows, m_image.height() - m_y);
            m_band = m_image.copy(0, m_y, m_image.width(), rows)
                         .convertToFormat(QImage::Format_ARGB32_Premultiplied);
            if (m_band.isNull()) {
                return false;
            }
        }
        // Premultiplied ARGB32 is blue, green, red, alpha in memory on the
        // little-endian machines the program runs on.
        m_opaque &= OverWhite(m_band.constScanLine(inBand), m_image.width(), row);
        ++m_y;
        return true;
    }
    bool SawTransparency() const { return m_opaque != 255; }

private:
    static constexpr int kBandRows = 64;
    const QImage& m_image;
    QImage m_band;
    int m_y = 0;
    std::uint8_t m_opaque = 255;
};
} // namespace

int LoadWithPlatformDecoder(const std::string& path, const LoadLimitSize& limits, CDibImage& picture,
                            PictureFileInfo& info) {
    if (!InputFile::IsRegularFile(path)) {
        return kFileFailed;
    }
    const QImage decoded = Decode(path, limits);
    if (decoded.isNull()) {
        return kFileFailed;
    }
    const int fileWidth = decoded.width();
    const int fileHeight = decoded.height();
    info.fileWidth = fileWidth;
    info.fileHeight = fileHeight;
    const LoadLimitSize size = FitBmpSize(fileWidth, fileHeight, limits.width, limits.height);
    BitmapInfoHeader header;
    InitDibHeader(header, size.width, size.height, 24, 0, 0);
    if (!picture.Create(&header, nullptr)) {
        return kFileOutOfMemory;
    }
    DecodedRows rows(decoded);
    const int result = StreamingScaler::Run(
        fileWidth, fileHeight, picture, [&rows](std::uint8_t* row) { return rows.Next(row); }, true);
    info.transparent = rows.SawTransparency();
    return result == kFileFailed ? kFileOutOfMemory : result;
}
