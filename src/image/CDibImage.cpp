#include "image/CDibImage.h"

#include "image/DibHelpers.h"
#include "platform/ScreenMetrics.h"

#include <algorithm>
#include <cstring>

using platform::HeapBlock;

namespace {
constexpr std::size_t kHeaderBytes = sizeof(BitmapInfoHeader);

std::size_t HeaderBlockBytes(int colorCount) {
    return kHeaderBytes + 2 * static_cast<std::size_t>(colorCount);
}

// Writes the palette-indices form after the 40 header bytes: 0, 1, 2, ...
void WriteIndexTable(HeapBlock& header, int colorCount) {
    auto* header40 = reinterpret_cast<BitmapInfoHeader*>(header.data());
    header40->biClrUsed = static_cast<std::uint32_t>(colorCount);
    header40->biClrImportant = static_cast<std::uint32_t>(colorCount);
    auto* indices = header.data() + kHeaderBytes;
    for (int i = 0; i < colorCount; ++i) {
        const auto index = static_cast<std::uint16_t>(i);
        std::memcpy(indices + 2 * i, &index, sizeof index);
    }
}
} // namespace

const BitmapInfoHeader* CDibImage::Header() const {
    return reinterpret_cast<const BitmapInfoHeader*>(m_header.data());
}

const RgbQuad* CDibImage::Palette() const {
    return reinterpret_cast<const RgbQuad*>(m_palette.data());
}

std::uint8_t* CDibImage::RowAddress(int y) const {
    return m_bits.data() + static_cast<std::size_t>(m_height - 1 - y) * m_rowBytes;
}

void CDibImage::FreeStorage() {
    m_header.reset();
    m_palette.reset();
    m_bits.reset();
}

int CDibImage::Create(const BitmapInfoHeader* header, const RgbQuad* palette) {
    if (m_bits) {
        // Only a fresh image may be created; this one must now be destroyed.
        FreeStorage();
        return 0;
    }
    if (header == nullptr || header->biBitCount == 0 || header->biBitCount > 32) {
        return 0;
    }
    const auto width = static_cast<std::int16_t>(header->biWidth);
    const auto height = static_cast<std::int16_t>(header->biHeight);
    if (width <= 0 || height <= 0) {
        return 0;
    }
    m_bitsPerPixel = static_cast<std::int16_t>(header->biBitCount);
    m_colorCount = m_bitsPerPixel == 24 ? 0 : static_cast<std::int16_t>(DibColorCount(m_bitsPerPixel));
    if (m_colorCount > 0) {
        m_palette = HeapBlock::Allocate(static_cast<std::size_t>(m_colorCount) * sizeof(RgbQuad));
        if (!m_palette) {
            return 0;
        }
        const auto* table = palette != nullptr ? palette : reinterpret_cast<const RgbQuad*>(header + 1);
        std::memcpy(m_palette.data(), table, m_palette.size());
    }
    m_header = HeapBlock::Allocate(HeaderBlockBytes(m_colorCount));
    if (!m_header) {
        FreeStorage();
        return 0;
    }
    std::memcpy(m_header.data(), header, kHeaderBytes);
    WriteIndexTable(m_header, m_colorCount);

    m_width = width;
    m_height = height;
    m_dpiX = static_cast<std::int16_t>(DpiFromPelsPerMeter(header->biXPelsPerMeter));
    m_dpiY = static_cast<std::int16_t>(DpiFromPelsPerMeter(header->biYPelsPerMeter));
    if (m_dpiX <= 0 || m_dpiY <= 0) {
        SetResolution(static_cast<std::int16_t>(platform::ScreenMetrics::LogicalDpiX()),
                      static_cast<std::int16_t>(platform::ScreenMetrics::LogicalDpiY()));
    }
    m_rowBytes = DibRowBytes(m_width, m_bitsPerPixel);
    m_imageBytes = m_rowBytes * static_cast<std::uint32_t>(m_height);
    m_bits = HeapBlock::Allocate(m_imageBytes);
    if (!m_bits) {
        FreeStorage();
        return 0;
    }
    m_reserved = 0;
    m_pixelFormat = m_bitsPerPixel == 1 ? kFillFormatMask : kFillFormatTrueColor;
    return 1;
}

int CDibImage::CopyFrom(const CDibImage& source) {
    if (!source.IsValid()) {
        return 0;
    }
    const bool sameShape = m_bitsPerPixel == source.m_bitsPerPixel && m_width == source.m_width &&
                           m_height == source.m_height && m_imageBytes == source.m_imageBytes;
    if (!sameShape) {
        FreeStorage();
        m_bitsPerPixel = source.m_bitsPerPixel;
        m_rowBytes = source.m_rowBytes;
        m_imageBytes = source.m_imageBytes;
        m_width = source.m_width;
        m_height = source.m_height;
    }
    m_dpiX = source.m_dpiX;
    m_dpiY = source.m_dpiY;
    m_pixelFormat = source.m_pixelFormat;
    m_colorCount = source.m_colorCount;

    if (m_colorCount > 0 && source.m_palette) {
        if (m_palette.size() != source.m_palette.size()) {
            m_palette = HeapBlock::Allocate(source.m_palette.size());
        }
        if (m_palette) {
            std::memcpy(m_palette.data(), source.m_palette.data(), m_palette.size());
        }
    }
    if (source.m_header) {
        if (m_header.size() != source.m_header.size()) {
            m_header = HeapBlock::Allocate(source.m_header.size());
        }
        if (m_header) {
            std::memcpy(m_header.data(), source.m_header.data(), m_header.size());
        }
    }
    m_bits.reset();
    m_bits = HeapBlock::AllocateForOverwrite(m_imageBytes);
    const bool blocksMissing = !m_header || (m_colorCount > 0 && !m_palette);
    if (!m_bits || blocksMissing) {
        FreeStorage();
        return 0;
    }
    std::memcpy(m_bits.data(), source.m_bits.data(), m_imageBytes);
    m_modified = 0;
    return 1;
}

int CDibImage::CreateFromPackedDib(const std::uint8_t* packed, std::size_t size) {
    if (packed == nullptr || size < kHeaderBytes) {
        return 0;
    }
    BitmapInfoHeader header;
    std::memcpy(&header, packed, kHeaderBytes);
    if (header.biBitCount != 1 && header.biBitCount != 24) {
        return 0;
    }
    const std::size_t tableBytes =
        static_cast<std::size_t>(DibColorCount(header.biBitCount)) * sizeof(RgbQuad);
    if (size < kHeaderBytes + tableBytes) {
        return 0;
    }
    RgbQuad table[2];
    std::memcpy(table, packed + kHeaderBytes, tableBytes);
    if (!Create(&header, header.biBitCount == 1 ? table : nullptr)) {
        return 0;
    }
    if (size - kHeaderBytes - tableBytes < m_imageBytes) {
        FreeStorage();
        return 0;
    }
    SetRows(0, m_height - 1, packed + kHeaderBytes + tableBytes);
    return 1;
}

std::size_t CDibImage::PackedDibBytes() const {
    return m_imageBytes + (static_cast<std::size_t>(m_colorCount) + 10) * sizeof(RgbQuad);
}

HeapBlock CDibImage::ToPackedDib() const {
    HeapBlock packed = HeapBlock::Allocate(PackedDibBytes());
    if (!packed) {
        return packed;
    }
    std::uint8_t* out = packed.data();
    std::memcpy(out, m_header.data(), kHeaderBytes);
    out += kHeaderBytes;
    if (m_colorCount > 0 && m_palette) {
        std::memcpy(out, m_palette.data(), static_cast<std::size_t>(m_colorCount) * sizeof(RgbQuad));
        out += static_cast<std::size_t>(m_colorCount) * sizeof(RgbQuad);
    }
    std::memcpy(out, m_bits.data(), m_imageBytes);
    return packed;
}

void CDibImage::Clear(ColorWord background) {
    HeapBlock row = HeapBlock::Allocate(m_rowBytes);
    if (!row) {
        return;
    }
    FillRow(row.data(), background, m_width, m_pixelFormat);
    for (int y = 0; y < m_height; ++y) {
        // PutSpanBytes merges a mask row's edge bytes into its source, so the
        // fill pattern is rebuilt only for masks.
        if (m_bitsPerPixel == 1) {
            FillRow(row.data(), background, m_width, m_pixelFormat);
        }
        PutSpanBytes(0, m_width - 1, y, row.data());
    }
}

void CDibImage::GetRow(int y, std::uint8_t* dst) const {
    const std::uint8_t* row = RowAddress(y);
    if (y + 2 < m_height) {
        // Passes run top to bottom, which walks the bottom-up storage
        // backwards; the hardware follows that poorly, so ask for the row
        // after next ahead of time.
        const std::uint8_t* ahead = row - 2 * static_cast<std::ptrdiff_t>(m_rowBytes);
        for (std::uint32_t offset = 0; offset < m_rowBytes; offset += 64) {
            __builtin_prefetch(ahead + offset, 0, 0);
        }
    }
    std::memcpy(dst, row, m_rowBytes);
}

void CDibImage::SetRow(int y, const std::uint8_t* src) {
    std::memcpy(RowAddress(y), src, m_rowBytes);
    m_modified = 1;
}

int CDibImage::GetRows(int y0, int y1, std::uint8_t* dst) const {
    std::memcpy(dst, RowAddress(y1), static_cast<std::size_t>(y1 - y0 + 1) * m_rowBytes);
    return y1 + 1;
}

int CDibImage::SetRows(int y0, int y1, const std::uint8_t* src) {
    std::memcpy(RowAddress(y1), src, static_cast<std::size_t>(y1 - y0 + 1) * m_rowBytes);
    m_modified = 1;
    return y1 + 1;
}

void CDibImage::GetRect(int x0, int /*x1*/, int y0, int y1, std::uint8_t* dst,
                        std::uint32_t dstRowBytes) const {
    if (m_bitsPerPixel < 8) {
        return;
    }
    y1 = std::min(y1, m_height - 1);
    y0 = std::max(y0, 0);
    const std::uint32_t offset = static_cast<std::uint32_t>(x0) * m_bitsPerPixel / 8;
    if (offset >= m_rowBytes) {
        return;
    }
    const std::uint32_t count = std::min(m_rowBytes - offset, dstRowBytes);
    for (int y = y1; y >= y0; --y) {
        std::memcpy(dst, RowAddress(y) + offset, count);
        dst += dstRowBytes;
    }
}

void CDibImage::GetColumn(int x, int y0, int y1, std::uint8_t* dst) const {
    if (m_bitsPerPixel == 24) {
        for (int y = y0; y <= y1; ++y, dst += 3) {
            std::memcpy(dst, RowAddress(y) + 3 * x, 3);
        }
        return;
    }
    if (m_bitsPerPixel != 1) {
        return;
    }
    std::uint8_t byte = 0;
    int filled = 0;
    for (int y = y0; y <= y1; ++y) {
        const int bit = (RowAddress(y)[x >> 3] >> (7 - (x & 7))) & 1;
        byte = static_cast<std::uint8_t>(byte | (bit << (7 - filled)));
        if (++filled == 8) {
            *dst++ = byte;
            byte = 0;
            filled = 0;
        }
    }
    if (filled > 0) {
        *dst = byte;
    }
}

void CDibImage::SetResolution(std::int16_t dpiX, std::int16_t dpiY) {
    m_dpiX = dpiX;
    m_dpiY = dpiY;
    if (m_header) {
        auto* header = reinterpret_cast<BitmapInfoHeader*>(m_header.data());
        header->biXPelsPerMeter = PelsPerMeterFromDpi(dpiX);
        header->biYPelsPerMeter = PelsPerMeterFromDpi(dpiY);
    }
}
