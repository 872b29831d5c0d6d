#include "paint/FloodFill.h"

#include "image/CDibImage.h"
#include "paint/DirectionalWalk.h"
#include "paint/PixelAccess.h"
#include "platform/WaitCursor.h"

#include <algorithm>

namespace {

// The fill's cursor: the current pixel and, when the caller wants it, the
// bounding rectangle of the painted pixels so far.
template <class Pointer, bool kTrackBounds> struct FillPosition {
    Pointer pixel;
    ImageRect bounds;

    void Add(int x, int y) {
        if constexpr (kTrackBounds) {
            bounds.left = std::min(bounds.left, x);
            bounds.right = std::max(bounds.right, x);
            bounds.top = std::min(bounds.top, y);
            bounds.bottom = std::max(bounds.bottom, y);
        }
    }
};

// A neighbour is taken when it does not already have the fill colour and its
// channels lie in the seed's box; it is then painted. When the fill colour
// lies outside the box, the box test alone refuses painted pixels.
template <bool kTrackBounds, bool kFillInBox> class TrueColorFillCell {
public:
    using Position = FillPosition<std::uint8_t*, kTrackBounds>;

    TrueColorFillCell(const TrueColorPixels& pixels, ColorWord fill, const ColorBox& box)
        : m_pixels(pixels), m_steps(pixels.Rows(), 3), m_blue(static_cast<std::uint8_t>(BlueOf(fill))),
          m_green(static_cast<std::uint8_t>(GreenOf(fill))), m_red(static_cast<std::uint8_t>(RedOf(fill))),
          m_box(box) {}

    Position Start(int x, int y) const {
        Position at{m_pixels.At(x, y), ImageRect{x, y, x, y}};
        Paint(at.pixel);
        return at;
    }
    bool Take(Position& at, int k, int nx, int ny) const {
        std::uint8_t* p = at.pixel + m_steps.offset[k];
        if (!m_box.Contains(TrueColorPixels::ReadAt(p))) {
            return false;
        }
        if (kFillInBox && (p[0] == m_blue) & (p[1] == m_green) & (p[2] == m_red)) {
            return false;
        }
        Paint(p);
        at.pixel = p;
        at.Add(nx, ny);
        return true;
    }
    void Back(Position& at, int k) const { at.pixel -= m_steps.offset[k]; }

private:
    void Paint(std::uint8_t* p) const {
        p[0] = m_blue;
        p[1] = m_green;
        p[2] = m_red;
    }

    TrueColorPixels m_pixels;
    StepOffsets m_steps;
    std::uint8_t m_blue, m_green, m_red;
    ColorBox m_box;
};

// 1-bit images read through their palette and write the fill colour's bit.
class MaskFillCell {
public:
    using Position = FillPosition<int, true>;

    MaskFillCell(const MaskPixels& pixels, ColorWord fill, const ColorBox& box)
        : m_pixels(pixels), m_fill(fill), m_fillRgb(RgbOf(fill)), m_box(box) {}

    Position Start(int x, int y) const {
        m_pixels.Write(x, y, m_fill);
        return Position{0, ImageRect{x, y, x, y}};
    }
    bool Take(Position& at, int, int nx, int ny) const {
        const Rgb c = m_pixels.Read(nx, ny);
        if ((c.red == m_fillRgb.red && c.green == m_fillRgb.green && c.blue == m_fillRgb.blue) ||
            !m_box.Contains(c)) {
            return false;
        }
        m_pixels.Write(nx, ny, m_fill);
        at.Add(nx, ny);
        return true;
    }
    void Back(Position&, int) const {}

private:
    MaskPixels m_pixels;
    ColorWord m_fill;
    Rgb m_fillRgb;
    ColorBox m_box;
};

template <class Pixels, class Cell>
ImageRect FillWith(CDibImage& image, int x, int y, ColorWord fillColor, const ColorBox& box) {
    const Pixels pixels(image);
    DirectionStack stack;
    const Cell cell(pixels, fillColor, box);
    // A push that fails only cuts the way back short; the tool accepts that.
    bool complete = true;
    return WalkFromSeed(image.Width(), image.Height(), x, y, stack, cell, complete).bounds;
}

} // namespace

int FloodFill(CDibImage& image, int x, int y, ColorWord fillColor, int tolerance, ImageRect* changed) {
    if (!image.IsValid() || x < 0 || y < 0 || x >= image.Width() || y >= image.Height()) {
        return 0;
    }
    if (image.BitsPerPixel() != 1 && image.BitsPerPixel() != 24) {
        return 0;
    }
    platform::WaitCursor wait;
    tolerance = std::clamp(tolerance, 0, 255);
    ImageRect bounds;
    if (image.BitsPerPixel() == 1) {
        const ColorBox box(MaskPixels(image).Read(x, y), tolerance);
        bounds = FillWith<MaskPixels, MaskFillCell>(image, x, y, fillColor, box);
    } else {
        const ColorBox box(TrueColorPixels(image).Read(x, y), tolerance);
        const bool fillInBox = box.Contains(RgbOf(fillColor));
        const bool track = changed != nullptr;
        bounds =
            track
                ? fillInBox
                      ? FillWith<TrueColorPixels, TrueColorFillCell<true, true>>(image, x, y, fillColor, box)
                      : FillWith<TrueColorPixels, TrueColorFillCell<true, false>>(image, x, y, fillColor, box)
            : fillInBox
                ? FillWith<TrueColorPixels, TrueColorFillCell<false, true>>(image, x, y, fillColor, box)
                : FillWith<TrueColorPixels, TrueColorFillCell<false, false>>(image, x, y, fillColor, box);
    }
    if (changed != nullptr) {
        *changed = bounds;
    }
    return 1;
}
