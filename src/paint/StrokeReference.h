#pragma once

#include <memory>

class CDibImage;

// The picture as it was at pen-down, kept for the length of one stroke. Brushes
// that read it instead of the picture they write (lighter, darker, blur,
// sharpen) give the same result however often the pen passes over a place
// within one stroke.
class StrokeReference {
public:
    StrokeReference();
    ~StrokeReference();
    StrokeReference(const StrokeReference&) = delete;
    StrokeReference& operator=(const StrokeReference&) = delete;

    // A plain copy. 1, or 0 when the memory cannot be had (nothing is kept).
    int TakeCopy(const CDibImage& picture);
    // The picture through the 3 x 3 rule of the Blur and Sharpen filters of
    // `strength` (1 Blur Small, 4 Sharpen Small). 1, or 0 out of memory.
    int TakeFiltered(const CDibImage& picture, int strength);
    void Release();

    const CDibImage* Image() const { return m_image.get(); }

private:
    std::unique_ptr<CDibImage> m_image;
};
