#include "formats/ExifOrientation.h"

#include "formats/FileResult.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "ops/CImageTransform.h"

#include <algorithm>
#include <cstring>


namespace exif {

namespace {
constexpr std::uint16_t kOrientationTag = 0x0112;
constexpr std::uint16_t kShortType = 3;
constexpr std::size_t kExifHeader = 6; // "Exif\0\0"

class TiffBytes {
public:
    TiffBytes(const std::uint8_t* data, std::size_t size, bool bigEndian)
        : m_data(data), m_size(size), m_bigEndian(bigEndian) {}
    bool Has(std::size_t at, std::size_t bytes) const { return at <= m_size && bytes <= m_size - at; }
    std::uint32_t Get(std::size_t at, int bytes) const {
        std::uint32_t value = 0;
        for (int i = 0; i < bytes; ++i) {
            const std::uint32_t byte = m_data[at + static_cast<std::size_t>(m_bigEndian ? i : bytes - 1 - i)];
            value = (value << 8) | byte;
        }
        return value;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    bool m_bigEndian;
};

void ReversePixelsInPlace(std::uint8_t* row, int width) {
    for (int left = 0, right = width - 1; left < right; ++left, --right) {
        std::swap_ranges(row + 3 * left, row + 3 * left + 3, row + 3 * right);
    }
}

void MirrorInPlace(CDibImage& picture) {
    for (int y = 0; y < picture.Height(); ++y) {
        ReversePixelsInPlace(picture.RowData(y), picture.Width());
    }
}

void UpsideDownInPlace(CDibImage& picture) {
    const std::size_t bytes = picture.RowBytes();
    for (int top = 0, bottom = picture.Height() - 1; top < bottom; ++top, --bottom) {
        std::swap_ranges(picture.RowData(top), picture.RowData(top) + bytes, picture.RowData(bottom));
    }
}

// The picture turned a quarter clockwise (or counter-clockwise), or null.
std::unique_ptr<CDibImage> QuarterTurn(const CDibImage& picture, bool clockwise) {
    auto turned = std::make_unique<CDibImage>();
    BitmapInfoHeader header;
    InitDibHeader(header, picture.Height(), picture.Width(), 24, picture.DpiX(), picture.DpiY());
    if (!turned->Create(&header, nullptr)) {
        return nullptr;
    }
    CImageTransform transform;
    transform.SetTarget(turned.get());
    transform.SetSource(&picture);
    const int done = clockwise ? transform.RotateRight() : transform.RotateLeft();
    return done ? std::move(turned) : nullptr;
}
} // namespace

int ReadOrientation(const std::uint8_t* data, std::size_t size) {
    if (size < kExifHeader + 8 || std::memcmp(data, "Exif\0\0", kExifHeader) != 0) {
        return 1;
    }
    const std::uint8_t* tiff = data + kExifHeader;
    const std::size_t tiffSize = size - kExifHeader;
    const bool bigEndian = tiff[0] == 'M' && tiff[1] == 'M';
    if (!bigEndian && !(tiff[0] == 'I' && tiff[1] == 'I')) {
        return 1;
    }
    const TiffBytes bytes(tiff, tiffSize, bigEndian);
    const std::size_t ifd = bytes.Get(4, 4);
    if (!bytes.Has(ifd, 2)) {
        return 1;
    }
    const std::uint32_t entries = bytes.Get(ifd, 2);
    for (std::uint32_t i = 0; i < entries; ++i) {
        const std::size_t entry = ifd + 2 + 12 * static_cast<std::size_t>(i);
        if (!bytes.Has(entry, 12)) {
            return 1;
        }
        if (bytes.Get(entry, 2) == kOrientationTag && bytes.Get(entry + 2, 2) == kShortType) {
            const std::uint32_t value = bytes.Get(entry + 8, 2);
            return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
        }
    }
    return 1;
}

int MakeUpright(std::unique_ptr<CDibImage>& picture, int orientation) {
    if (orientation == 2 || orientation == 3) {
        MirrorInPlace(*picture);
    }
    if (orientation == 3 || orientation == 4) {
        UpsideDownInPlace(*picture);
    }
    if (!SwapsSides(orientation)) {
        return kFileOk;
    }
    // 6 turns clockwise, 8 counter-clockwise; 5 and 7 are those turns mirrored.
    std::unique_ptr<CDibImage> turned = QuarterTurn(*picture, orientation == 5 || orientation == 6);
    if (!turned) {
        return kFileOutOfMemory;
    }
    if (orientation == 5 || orientation == 7) {
        MirrorInPlace(*turned);
    }
    picture = std::move(turned);
    return kFileOk;
}

} // namespace exif
