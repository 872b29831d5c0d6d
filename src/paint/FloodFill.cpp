#include "paint/FloodFill.h"

#include "image/CDibImage.h"
#include "paint/DirectionalWalk.h"
#include "paint/PixelAccess.h"
#include "platform/WaitCursor.h"

#include <algorithm>

namespace {

template <class Pixels> class FillVisitor {
public:
    FillVisitor(const Pixels& pixels, ColorWord fill, const ColorBox& box, int x, int y)
        : m_pixels(pixels), m_fill(fill), m_fillRgb(RgbOf(fill)), m_box(box), m_bounds{x, y, x, y} {}

    bool Take(int x, int y) {
        const Rgb c = m_pixels.Read(x, y);
        if (c.red == m_fillRgb.red && c.green == m_fillRgb.green && c.blue == m_fillRgb.blue) {
            return false;
        }
        if (!m_box.Contains(c)) {
            return false;
        }
        Paint(x, y);
        return true;
    }

    void Paint(int x, int y) {
        m_pixels.Write(x, y, m_fill);
        m_bounds.left = std::min(m_bounds.left, x);
        m_bounds.right = std::max(m_bounds.right, x);
        m_bounds.top = std::min(m_bounds.top, y);
        m_bounds.bottom = std::max(m_bounds.bottom, y);
    }

    const ImageRect& Bounds() const { return m_bounds; }

private:
    Pixels m_pixels;
    ColorWord m_fill;
    Rgb m_fillRgb;
    ColorBox m_box;
    ImageRect m_bounds;
};

template <class Pixels>
ImageRect FillWith(CDibImage& image, int x, int y, ColorWord fillColor, int tolerance) {
    const Pixels pixels(image);
    DirectionStack stack;
    FillVisitor<Pixels> visitor(pixels, fillColor, ColorBox(pixels.Read(x, y), tolerance), x, y);
    visitor.Paint(x, y);
    // A push that fails only cuts the way back short; the tool accepts that.
    WalkFromSeed(image.Width(), image.Height(), x, y, stack, visitor);
    return visitor.Bounds();
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
    const ImageRect bounds = image.BitsPerPixel() == 1
                                 ? FillWith<MaskPixels>(image, x, y, fillColor, tolerance)
                                 : FillWith<TrueColorPixels>(image, x, y, fillColor, tolerance);
    if (changed != nullptr) {
        *changed = bounds;
    }
    return 1;
}
