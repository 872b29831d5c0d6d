#pragma once

#include "platform/HeapBlock.h"

#include <cstdint>

// Maps one 24-bit row (blue, green, red) of a source width onto a target
// width by area averaging: each target pixel is the mean of the source pixels
// that fall on it, weighted by how much of each one it covers, rounded to
// nearest. Works for shrinking and enlarging. The weights are computed once
// per pair of widths, so one resampler serves every row of a picture.
class RowResampler {
public:
    RowResampler(int sourceWidth, int targetWidth);
    // False when the weight tables could not be allocated.
    bool IsValid() const { return static_cast<bool>(m_first); }
    void Resample(const std::uint8_t* source, std::uint8_t* target) const;

    int SourceWidth() const { return m_sourceWidth; }
    int TargetWidth() const { return m_targetWidth; }

private:
    int m_sourceWidth;
    int m_targetWidth;
    platform::HeapBlock m_first;   // int32 per target pixel: first source pixel
    platform::HeapBlock m_count;   // int32 per target pixel: source pixels covered
    platform::HeapBlock m_weights; // uint32 per covered pair, in 1/targetWidth of a pixel
};
