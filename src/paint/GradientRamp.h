#pragma once

#include "image/DibTypes.h"

#include <cstdint>
#include <functional>

class CDibImage;

// The gradient renderer: a ramp of 1,200 colours from the start colour to the
// end colour, precomputed once, and the four shapes that reduce every pixel
// to an index into it.
class GradientRamp {
public:
    static constexpr int kEntries = 1200;
    static constexpr int kLast = kEntries - 1;

    enum ColorMode : int { kRgb = 0, kHueClockwise = 1, kHueCounterClockwise = 2 };
    enum Shape : int { kLinear = 0, kRadial = 1, kRectangle = 2, kCone = 3 };

    GradientRamp() = default;

    void SetColorMode(int mode) { m_colorMode = static_cast<std::int16_t>(mode); }
    void SetShape(int shape) { m_shape = static_cast<std::int16_t>(shape); }
    void SetColors(ColorWord start, ColorWord end);
    int ColorMode() const { return m_colorMode; }
    int Shape() const { return m_shape; }

    // Fills the table for the colours and colour mode.
    void BuildTable();
    // Entry i as a colour word (0x00BBGGRR).
    ColorWord Entry(int i) const;

    // Builds the table and renders the shape over the whole 24-bit image, from
    // start point (sx, sy) to end point (ex, ey). Returns 1 when something was
    // drawn, 0 for a drag of no length, another depth or lack of memory.
    int Render(CDibImage& image, int sx, int sy, int ex, int ey);

private:
    struct Drag {
        int sx, sy, ex, ey;
    };
    void InterpolateRgb();
    void InterpolateHue();
    int RenderLinear(CDibImage& image, const Drag& drag) const;
    int RenderVertical(CDibImage& image, const Drag& drag) const;
    int RenderRadial(CDibImage& image, const Drag& drag) const;
    int RenderRectangle(CDibImage& image, const Drag& drag) const;
    int RenderCone(CDibImage& image, const Drag& drag) const;
    // Rows first..end-1 in bands over the cores: `indicesOf(y, out)` reduces
    // row y to ramp indices, which are then written as pixels. 0 when a
    // buffer is missing.
    int RenderRows(CDibImage& image, int first, int end,
                   const std::function<void(int y, std::int32_t* out)>& indicesOf) const;
    void PackPixels();

public:
    // Columns first..last of a 24-bit row from their ramp indices.
    void WriteRow(std::uint8_t* row, const std::int32_t* indices, int first, int last) const;

private:
    void FillRow(std::uint8_t* row, int index, int first, int last) const;
    // FillRow for the short runs of the cone: pixel by pixel, no setup.
    void FillRun(std::uint8_t* row, int index, int first, int last) const;

    // Red, green, blue per entry.
    std::uint8_t m_table[kEntries][3] = {};
    // The entries as stored pixel bytes (blue, green, red, 0) for rendering.
    std::uint32_t m_pixels[kEntries] = {};
    std::int16_t m_colorMode = kRgb;
    std::int16_t m_shape = kLinear;
    ColorWord m_start = 0;
    ColorWord m_end = 0;
};
