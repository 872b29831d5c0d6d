#include "image/CDibImage.h"

#include "image/BitSpan.h"

#include <algorithm>
#include <cstring>

// Span, pixel and palette access of CDibImage.

int CDibImage::GetSpan(int x0, int x1, int y, std::uint8_t* dst) const {
    if (m_bitsPerPixel >= 8) {
        return GetSpanBytes(x0, x1, y, dst);
    }
    if (!RowInside(y)) {
        return 0;
    }
    if (m_bitsPerPixel == 1) {
        CopyBitSpan(RowAddress(y), x0, dst, 0, x1 - x0 + 1);
    }
    return 1;
}

int CDibImage::GetSpanBytes(int x0, int x1, int y, std::uint8_t* dst) const {
    const int bpp = m_bitsPerPixel;
    const int length = (bpp + 7) / 8 + x1 * bpp / 8 - x0 * bpp / 8;
    if (!RowInside(y)) {
        std::memset(dst, 0, static_cast<std::size_t>(std::max(length, 0)));
        return 0;
    }
    const int offset = x0 * bpp / 8;
    // Never read past the row, even when a caller's span runs beyond it.
    const int available = static_cast<int>(m_rowBytes) - offset;
    const int count = std::min({length, static_cast<int>(m_rowBytes), available});
    if (count > 0) {
        std::memcpy(dst, RowAddress(y) + offset, static_cast<std::size_t>(count));
    }
    return 1;
}

int CDibImage::PutSpan(int x0, int x1, int y, const std::uint8_t* src) {
    if (m_bitsPerPixel >= 8) {
        return PutSpanBytes(x0, x1, y, const_cast<std::uint8_t*>(src));
    }
    if (!RowInside(y)) {
        return 0;
    }
    if (m_bitsPerPixel == 1) {
        CopyBitSpan(src, 0, RowAddress(y), x0, x1 - x0 + 1);
    }
    m_modified = 1;
    return 1;
}

int CDibImage::PutSpanBytes(int x0, int x1, int y, std::uint8_t* src) {
    if (!RowInside(y)) {
        return 0;
    }
    if (x1 < x0) {
        return 1;
    }
    std::uint8_t* row = RowAddress(y);
    if (m_bitsPerPixel == 1) {
        const int first = x0 >> 3;
        const int last = x1 >> 3;
        const auto keepLeft = static_cast<std::uint8_t>(~(0xFF >> (x0 & 7)));
        const auto keepRight = static_cast<std::uint8_t>(~(0xFF << (7 - (x1 & 7))));
        const int n = last - first;
        src[0] = static_cast<std::uint8_t>((src[0] & ~keepLeft) | (row[first] & keepLeft));
        src[n] = static_cast<std::uint8_t>((src[n] & ~keepRight) | (row[last] & keepRight));
        std::memcpy(row + first, src, static_cast<std::size_t>(n + 1));
    } else {
        const int bytesPerPixel = m_bitsPerPixel / 8;
        std::memcpy(row + x0 * bytesPerPixel, src, static_cast<std::size_t>(x1 - x0 + 1) * bytesPerPixel);
    }
    m_modified = 1;
    return 1;
}

int CDibImage::GetBit(int x, int y) const {
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) {
        return 0;
    }
    return (RowAddress(y)[x >> 3] >> (7 - (x & 7))) & 1;
}

void CDibImage::SetBit(int x, int y, bool on) {
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) {
        return;
    }
    std::uint8_t& byte = RowAddress(y)[x >> 3];
    const auto bit = static_cast<std::uint8_t>(0x80 >> (x & 7));
    byte = on ? static_cast<std::uint8_t>(byte | bit) : static_cast<std::uint8_t>(byte & ~bit);
    m_modified = 1;
}

ColorWord CDibImage::GetPixel(int x, int y) const {
    if (m_bitsPerPixel != 24 || x < 0 || y < 0 || x >= m_width || y >= m_height) {
        return 0;
    }
    const std::uint8_t* p = RowAddress(y) + 3 * x;
    return MakeColorWord(p[2], p[1], p[0]);
}

void CDibImage::SetPixelRGB(int x, int y, std::uint8_t b0, std::uint8_t b1, std::uint8_t b2) {
    if (m_bitsPerPixel != 24 || x < 0 || y < 0 || x >= m_width || y >= m_height) {
        return;
    }
    std::uint8_t* p = RowAddress(y) + 3 * x;
    p[0] = b0;
    p[1] = b1;
    p[2] = b2;
    m_modified = 1;
}

void CDibImage::SetPixel(int x, int y, ColorWord color) {
    SetPixelRGB(x, y, static_cast<std::uint8_t>(BlueOf(color)), static_cast<std::uint8_t>(GreenOf(color)),
                static_cast<std::uint8_t>(RedOf(color)));
}

int CDibImage::GetPaletteEntry(int i, std::int16_t& first, std::int16_t& second, std::int16_t& third) const {
    if (i < 0 || i >= m_colorCount || !m_palette) {
        return 0;
    }
    const RgbQuad& entry = Palette()[i];
    first = entry.blue;
    second = entry.green;
    third = entry.red;
    return 1;
}

int CDibImage::GetPaletteColor(int i, ColorWord& color) const {
    if (i < 0 || i >= m_colorCount || !m_palette) {
        return 0;
    }
    const RgbQuad& entry = Palette()[i];
    color = MakeColorWord(entry.red, entry.green, entry.blue);
    return 1;
}
