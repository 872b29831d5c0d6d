#pragma once

#include "image/CDibImage.h"
#include "image/DibTypes.h"

#include <cstddef>
#include <cstdint>

// Per-format pixel readers and writers for the engines' inner loops. Each is a
// small value type chosen once per operation and passed as a template
// argument, so every pixel access compiles to a few loads and stores instead
// of a call through a pointer. Rows are reached from the top-row address and a
// negative stride, because images keep their rows bottom-up.

// Red, green and blue of one pixel, as the fills compare them.
struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;
};

inline Rgb RgbOf(ColorWord c) {
    return Rgb{RedOf(c), GreenOf(c), BlueOf(c)};
}

// Where row y of an image starts: top + y * stride (stride is negative).
struct RowWalker {
    explicit RowWalker(CDibImage& image)
        : top(image.RowData(0)), stride(-static_cast<std::ptrdiff_t>(image.RowBytes())), width(image.Width()),
          height(image.Height()) {}

    std::uint8_t* Row(int y) const { return top + y * stride; }
    bool Inside(int x, int y) const {
        return static_cast<unsigned>(x) < static_cast<unsigned>(width) &&
               static_cast<unsigned>(y) < static_cast<unsigned>(height);
    }

    std::uint8_t* top;
    std::ptrdiff_t stride;
    int width;
    int height;
};

// Byte offsets of the four walk directions (up, right, down, left) for a row
// walker and a pixel size in bytes.
struct StepOffsets {
    StepOffsets(const RowWalker& rows, int pixelBytes)
        : offset{-rows.stride, pixelBytes, rows.stride, -pixelBytes} {}
    std::ptrdiff_t offset[4];
};

// 24-bit pictures: blue, green, red bytes.
class TrueColorPixels {
public:
    explicit TrueColorPixels(CDibImage& image) : m_rows(image) {}

    const RowWalker& Rows() const { return m_rows; }
    Rgb Read(int x, int y) const { return ReadAt(m_rows.Row(y) + 3 * x); }
    static Rgb ReadAt(const std::uint8_t* p) { return Rgb{p[2], p[1], p[0]}; }
    std::uint8_t* At(int x, int y) const { return m_rows.Row(y) + 3 * x; }
    // Writes a colour word (0x00BBGGRR).
    void Write(int x, int y, ColorWord color) const {
        std::uint8_t* p = m_rows.Row(y) + 3 * x;
        p[0] = static_cast<std::uint8_t>(BlueOf(color));
        p[1] = static_cast<std::uint8_t>(GreenOf(color));
        p[2] = static_cast<std::uint8_t>(RedOf(color));
    }

private:
    RowWalker m_rows;
};

// 1-bit images: a pixel reads as its palette entry; a write sets the bit to
// whether the low 16 bits of the colour word are non-zero.
class MaskPixels {
public:
    explicit MaskPixels(CDibImage& image) : m_rows(image) {
        for (int i = 0; i < 2; ++i) {
            ColorWord c = i == 0 ? 0x000000 : 0xFFFFFF;
            image.GetPaletteColor(i, c);
            m_palette[i] = RgbOf(c);
        }
    }

    const RowWalker& Rows() const { return m_rows; }
    int Bit(int x, int y) const { return (m_rows.Row(y)[x >> 3] >> (7 - (x & 7))) & 1; }
    Rgb Read(int x, int y) const { return m_palette[Bit(x, y)]; }
    void SetBit(int x, int y, bool on) const {
        std::uint8_t& byte = m_rows.Row(y)[x >> 3];
        const auto bit = static_cast<std::uint8_t>(0x80 >> (x & 7));
        byte = on ? static_cast<std::uint8_t>(byte | bit) : static_cast<std::uint8_t>(byte & ~bit);
    }
    void Write(int x, int y, ColorWord color) const { SetBit(x, y, (color & 0xFFFF) != 0); }

private:
    RowWalker m_rows;
    Rgb m_palette[2];
};

// The similarity box around a seed colour: each channel c passes when
// max(seed - t, 0) <= c <= seed + t (the upper end is not cut at 255).
class ColorBox {
public:
    ColorBox(const Rgb& seed, int tolerance)
        : m_low{Low(seed.red, tolerance), Low(seed.green, tolerance), Low(seed.blue, tolerance)},
          m_span{seed.red + tolerance - m_low.red, seed.green + tolerance - m_low.green,
                 seed.blue + tolerance - m_low.blue} {}

    // One branch for the three channels: the tests are combined with & .
    bool Contains(const Rgb& c) const {
        return (static_cast<unsigned>(c.red - m_low.red) <= static_cast<unsigned>(m_span.red)) &
               (static_cast<unsigned>(c.green - m_low.green) <= static_cast<unsigned>(m_span.green)) &
               (static_cast<unsigned>(c.blue - m_low.blue) <= static_cast<unsigned>(m_span.blue));
    }

private:
    static int Low(int c, int t) { return c - t > 0 ? c - t : 0; }
    Rgb m_low;
    Rgb m_span;
};
