#pragma once

#include "image/SavedPixels.h"
#include "platform/HeapBlock.h"

#include <vector>

// The original pixels of the places a stroke paints, saved just before each
// dab or segment touches them. Each row keeps one interval of saved pixels;
// a rectangle that reaches beyond it grows the interval by copying only the
// newly covered pixels, which nothing has painted yet. So a stroke is stored
// in at most the bytes of its bounding rectangle, and saving costs one copy of
// each pixel it touches.
class RegionPixels final : public SavedPixels {
public:
    RegionPixels(int width, int height, int bytesPerPixel);

    // Saves pixels left..right, top..bottom (inclusive, clipped to the image)
    // of `image` that are not saved yet; false when memory ran out (what was
    // saved before stays valid).
    bool Save(const CDibImage& image, int left, int top, int right, int bottom);
    void SwapWith(CDibImage& image) override;
    std::size_t Bytes() const override;
    bool Matches(const CDibImage& image) const;

private:
    struct Row {
        int left = 0;  // first saved pixel
        int right = 0; // one past the last; left == right: nothing saved
        platform::HeapBlock bytes;
    };
    bool SaveRow(const CDibImage& image, int y, int left, int right);
    void CoverRows(int top, int bottom);

    int m_width;
    int m_height;
    int m_bytesPerPixel;
    int m_top = 0; // image row of m_rows[0]
    std::vector<Row> m_rows;
};
