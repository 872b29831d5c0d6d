#pragma once

#include "image/DibTypes.h"
#include "platform/HeapBlock.h"

#include <cstddef>
#include <cstdint>

// The one raster type: a device-independent bitmap held in memory exactly as a
// DIB is laid out (40-byte header, colour table, bottom-up rows padded to 4
// bytes). Pictures are 24 bits per pixel (blue, green, red), masks 1 bit per
// pixel (most significant bit first, set = selected). Rows are addressed from
// the top although they are stored bottom-up. Every image has one owner and is
// deep-copied, never shared.
//
// Results: 1 success, 0 failure. Row, span and pixel operations do not check
// column positions; callers clip columns to 0..width-1 themselves.
class CDibImage {
public:
    CDibImage() = default;
    virtual ~CDibImage() = default;
    CDibImage(const CDibImage&) = delete;
    CDibImage& operator=(const CDibImage&) = delete;

    // Sets the image up from a bitmap header. For depths other than 24 the
    // colour table comes from `palette`, or, when that is null, from the table
    // that directly follows the 40 header bytes. Only for a fresh image.
    int Create(const BitmapInfoHeader* header, const RgbQuad* palette);
    // Makes this (fresh) image an independent deep copy of `source`.
    int CopyFrom(const CDibImage& source);
    // Builds the image from a packed DIB (header, colour table, rows); only 1-
    // and 24-bit DIBs are accepted. `size` bounds the bytes that may be read.
    int CreateFromPackedDib(const std::uint8_t* packed, std::size_t size);
    // Header, colour table and rows as one new block; empty on lack of memory.
    platform::HeapBlock ToPackedDib() const;
    std::size_t PackedDibBytes() const;
    // Fills every row with `background` (a mask: all set unless it is 0).
    void Clear(ColorWord background);

    void GetRow(int y, std::uint8_t* dst) const;
    void SetRow(int y, const std::uint8_t* src);
    int GetRows(int y0, int y1, std::uint8_t* dst) const;
    int SetRows(int y0, int y1, const std::uint8_t* src);
    void GetRect(int x0, int x1, int y0, int y1, std::uint8_t* dst, std::uint32_t dstRowBytes) const;
    void GetColumn(int x, int y0, int y1, std::uint8_t* dst) const;

    int GetSpan(int x0, int x1, int y, std::uint8_t* dst) const;
    int GetSpanBytes(int x0, int x1, int y, std::uint8_t* dst) const;
    int PutSpan(int x0, int x1, int y, const std::uint8_t* src);
    int PutSpanBytes(int x0, int x1, int y, std::uint8_t* src);

    int GetBit(int x, int y) const;
    void SetBit(int x, int y, bool on);
    ColorWord GetPixel(int x, int y) const;
    void SetPixelRGB(int x, int y, std::uint8_t b0, std::uint8_t b1, std::uint8_t b2);
    void SetPixel(int x, int y, ColorWord color);
    int GetPaletteEntry(int i, std::int16_t& first, std::int16_t& second, std::int16_t& third) const;
    int GetPaletteColor(int i, ColorWord& color) const;

    // Sets the resolution and rewrites the header's pixels-per-metre fields.
    void SetResolution(std::int16_t dpiX, std::int16_t dpiY);

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    std::uint32_t RowBytes() const { return m_rowBytes; }
    int BitsPerPixel() const { return m_bitsPerPixel; }
    int ColorCount() const { return m_colorCount; }
    int DpiX() const { return m_dpiX; }
    int DpiY() const { return m_dpiY; }
    int PixelFormat() const { return m_pixelFormat; }
    std::uint32_t ImageBytes() const { return m_imageBytes; }
    bool IsModified() const { return m_modified != 0; }
    const BitmapInfoHeader* Header() const;
    const RgbQuad* Palette() const;
    // Pixel storage in DIB order (bottom row first); for the display and tests.
    const std::uint8_t* Bits() const { return m_bits.data(); }
    // Writable pixel storage for whole-image engines that fill every row in
    // storage order; marks the image modified.
    std::uint8_t* MutableBits() {
        m_modified = 1;
        return m_bits.data();
    }
    // The stored bytes of row y (counted from the top), without checks: for
    // engine inner loops (fills, brush spans) that visit pixels at random and
    // cannot afford a call per pixel. Callers keep y inside 0..height-1.
    std::uint8_t* RowData(int y) {
        return m_bits.data() + static_cast<std::size_t>(m_height - 1 - y) * m_rowBytes;
    }
    const std::uint8_t* RowData(int y) const {
        return m_bits.data() + static_cast<std::size_t>(m_height - 1 - y) * m_rowBytes;
    }
    bool IsValid() const { return static_cast<bool>(m_bits); }

private:
    std::uint8_t* RowAddress(int y) const;
    bool RowInside(int y) const { return y >= 0 && y < m_height; }
    void FreeStorage();

    platform::HeapBlock m_header;  // 40-byte header + colorCount 16-bit indices
    platform::HeapBlock m_palette; // colorCount entries, none for 24 bits
    std::int16_t m_width = 0;
    std::int16_t m_height = 0;
    std::uint32_t m_rowBytes = 0;
    std::int16_t m_bitsPerPixel = 0;
    std::int16_t m_colorCount = 0;
    std::uint32_t m_reserved = 0;
    std::int16_t m_dpiX = 0;
    std::int16_t m_dpiY = 0;
    std::int16_t m_pixelFormat = 0;
    std::uint32_t m_imageBytes = 0;
    std::int32_t m_modified = 0;
    platform::HeapBlock m_bits;
};
