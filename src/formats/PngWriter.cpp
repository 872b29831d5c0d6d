#include "formats/PngWriter.h"

#include "formats/FileResult.h"
#include "formats/SafeFileWriter.h"
#include "image/CDibImage.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>

namespace {
constexpr double kInchesPerMetre = 10000.0 / 254.0;

QImage ToQImage(const CDibImage& image) {
    QImage out(image.Width(), image.Height(), QImage::Format_RGB888);
    if (out.isNull()) {
        return out;
    }
    for (int y = 0; y < image.Height(); ++y) {
        std::uint8_t* line = out.scanLine(y);
        image.GetRow(y, line);
        for (int x = 0; x < image.Width(); ++x) {
            std::swap(line[3 * x], line[3 * x + 2]); // blue, green, red to red, green, blue
        }
    }
    out.setDotsPerMeterX(static_cast<int>(image.DpiX() * kInchesPerMetre + 0.5));
    out.setDotsPerMeterY(static_cast<int>(image.DpiY() * kInchesPerMetre + 0.5));
    return out;
}
} // namespace

int WritePng(const std::string& path, const CDibImage& image) {
    if (image.BitsPerPixel() != 24) {
        return kFileFailed;
    }
    SafeFileWriter file(path);
    if (!file.Open()) {
        return kFileFailed;
    }
    const QImage picture = ToQImage(image);
    if (picture.isNull()) {
        return kFileOutOfMemory;
    }
    QByteArray encoded;
    QBuffer buffer(&encoded);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.save(&buffer, "PNG")) {
        return kFileFailed;
    }
    if (!file.Write(encoded.constData(), static_cast<std::size_t>(encoded.size())) || !file.Commit()) {
        return kFileFailed;
    }
    return kFileOk;
}
