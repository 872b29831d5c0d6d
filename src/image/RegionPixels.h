#pragma once

#include "image/CDibImage.h"
#include "image/SavedPixels.h"
#include "platform/HeapBlock.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// The original pixels of the places a stroke paints, saved just before each
// dab or segment touches them. Each row keeps one interval of saved pixels;
// a rectangle that reaches beyond it grows the interval by copying only the
// newly covered pixels, which nothing has painted yet. So a finished stroke
// is stored in at most the bytes of its bounding rectangle, and saving costs
// about one copy of each pixel it touches.
//
// While the stroke goes on, each row's interval lives in a window that grows
// by doubling inside large blocks (so a dab costs no allocation); `Finish`
// packs the intervals into one block of exactly their size.
class RegionPixels final : public SavedPixels {
public:
    RegionPixels(int width, int height, int bytesPerPixel);

    // Saves pixels left..right, top..bottom (inclusive, clipped to the image)
    // of `image` that are not saved yet; false when memory ran out (what was
    // saved before stays valid) or after Finish.
    bool Save(const CDibImage& image, int left, int top, int right, int bottom);
    // True when left..right, top..bottom of `image` is known to be saved
    // already (an answer that costs no look at the rows; false says nothing).
    bool Covers(const CDibImage* image, int left, int top, int right, int bottom) const {
        return image != nullptr && image == m_coveredImage && Matches(*image) && m_coveredLeft <= left && right <= m_coveredRight && m_coveredTop <= top &&
               bottom <= m_coveredBottom;
    }
    // Packs the saved pixels tightly; nothing more is saved afterwards.
    void Finish();
    void SwapWith(CDibImage& image) override;
    std::size_t Bytes() const override;
    bool Matches(const CDibImage& image) const {
        return image.Width() == m_width && image.Height() == m_height && image.BitsPerPixel() == m_bytesPerPixel * 8;
    }
    RegionPixels* AsRegion() override { return this; }

private:
    struct Row {
        int left = 0;  // first saved pixel
        int right = 0; // one past the last; left == right: nothing saved
        int windowLeft = 0;
        int windowRight = 0;
        std::uint8_t* window = nullptr; // bytes of pixels windowLeft..windowRight-1
    };
    bool SaveRow(const CDibImage& image, Row& row, int y, int left, int right);
    bool GrowWindow(Row& row, int left, int right);
    std::uint8_t* Take(std::size_t bytes);
    void CoverRows(int top, int bottom);

    int m_width;
    int m_height;
    int m_bytesPerPixel;
    int m_top = 0; // image row of m_rows[0]
    // A rectangle of m_coveredImage known to be saved in full (inclusive),
    // so that the many requests a stroke
    // makes inside what it saved already cost no look at the rows.
    int m_coveredLeft = 0;
    int m_coveredTop = 0;
    int m_coveredRight = -1;
    int m_coveredBottom = -1;
    const CDibImage* m_coveredImage = nullptr; // the image last saved from
    std::vector<Row> m_rows;
    std::vector<platform::HeapBlock> m_blocks;
    std::size_t m_used = 0; // bytes taken from the last block
    bool m_finished = false;
};
