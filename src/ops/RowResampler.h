#pragma once

#include "ops/ResampleKernel.h"
#include "platform/HeapBlock.h"

#include <cstdint>

// Resamples one 24-bit row (blue, green, red) to another width: a source row
// in, a target row out. The picture loader's streaming scaler and the Rescale
// command both use it. Besides the kernel's taps it keeps them padded to the
// widest target sample (zero weights), laid out tap by tap, so that eight
// target pixels are summed at once; the sums and their rounding are the
// kernel's, so the output does not depend on the path a pixel takes.
class RowResampler {
public:
    RowResampler(int sourceWidth, int targetWidth);
    // False when the weight tables could not be allocated.
    bool IsValid() const { return m_kernel.IsValid() && m_firsts; }
    void Resample(const std::uint8_t* source, std::uint8_t* target) const;

    int SourceWidth() const { return m_kernel.SourceLength(); }
    int TargetWidth() const { return m_kernel.TargetLength(); }

private:
    void BuildPaddedTaps();
    void ResampleFrom(int first, const std::uint8_t* source, std::uint8_t* target) const;
    int ResampleVectorised(const std::uint8_t* source, std::uint8_t* target) const;

    ResampleKernel m_kernel;
    platform::HeapBlock m_firsts; // First(i) per target pixel
    platform::HeapBlock m_padded; // weight k of target i at [k x width + i]
    int m_widestCount = 0;
    // Target pixels [0, m_vectorEnd) read only source pixels that have a
    // whole 4-byte word inside the row.
    int m_vectorEnd = 0;
};
