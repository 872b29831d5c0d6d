#pragma once

#include "platform/HeapBlock.h"

#include <cstdint>

namespace ops {

// Maps a line of `sourceLength` samples onto `targetLength` samples: area
// averaging when the line shrinks (or keeps its length, which copies it), and
// bilinear interpolation between the two nearest samples when it grows.
// Integer weights in 1/65536 that add up to exactly 65536 for every target
// sample (so a constant line stays constant); every output is the weighted sum
// rounded to nearest.
class ResampleKernel {
public:
    // 0 when the tables cannot be had.
    int Init(int sourceLength, int targetLength);

    int TargetLength() const { return m_targetLength; }
    // Taps of target sample i: `Count(i)` source samples from `First(i)` with
    // the weights at `Weights(i)`, which add up to kOne.
    int First(int i) const { return Taps()[i].first; }
    int Count(int i) const { return Taps()[i].count; }
    const std::int32_t* Weights(int i) const { return WeightTable() + Taps()[i].weightOffset; }
    static constexpr std::uint32_t kOne = 65536;
    // The weighted sum of a target sample turned into its value (rounded).
    static std::uint8_t Finish(std::uint32_t sum) {
        return static_cast<std::uint8_t>((sum + kOne / 2) >> 16);
    }

private:
    struct Tap {
        std::int32_t first;
        std::int32_t count;
        std::int32_t weightOffset;
    };
    const Tap* Taps() const { return reinterpret_cast<const Tap*>(m_taps.data()); }
    const std::int32_t* WeightTable() const {
        return reinterpret_cast<const std::int32_t*>(m_weights.data());
    }
    void InitArea(int sourceLength, int targetLength);
    void InitBilinear(int sourceLength, int targetLength);

    platform::HeapBlock m_taps;
    platform::HeapBlock m_weights;
    int m_targetLength = 0;
};

// Resamples one row of 24-bit pixels to another width: a source row in, a
// target row out. The Rescale command and the picture loader's streaming
// scaler both use it.
class RowResampler {
public:
    int Init(int sourceWidth, int targetWidth) { return m_kernel.Init(sourceWidth, targetWidth); }
    void Resample(const std::uint8_t* sourceRow, std::uint8_t* targetRow) const;

private:
    ResampleKernel m_kernel;
};

} // namespace ops
