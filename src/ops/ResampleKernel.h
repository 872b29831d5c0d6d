#pragma once

#include "platform/HeapBlock.h"

#include <cstddef>
#include <cstdint>

// Maps a line of `sourceLength` samples onto `targetLength` samples: area
// averaging when the line shrinks (or keeps its length, which copies it): each
// target sample is the mean of the source samples that fall on it, weighted by
// how much of each it covers; bilinear interpolation between the two nearest
// samples when it grows. Integer weights; every output is the weighted sum
// divided by the weights' total, rounded to nearest. The tables are built once
// per pair of lengths, so one kernel serves every row (or column) of a picture.
class ResampleKernel {
public:
    ResampleKernel() = default;
    ResampleKernel(int sourceLength, int targetLength) { Init(sourceLength, targetLength); }
    // 0 when the tables cannot be had.
    int Init(int sourceLength, int targetLength);
    bool IsValid() const { return m_targetLength > 0; }

    int SourceLength() const { return m_sourceLength; }
    int TargetLength() const { return m_targetLength; }
    // Taps of target sample i: `Count(i)` source samples from `First(i)` with
    // the weights at `Weights(i)`.
    int First(int i) const { return Taps()[i].first; }
    int Count(int i) const { return Taps()[i].count; }
    const std::int32_t* Weights(int i) const { return WeightTable() + Taps()[i].weightOffset; }
    // A target sample's weighted sum of bytes turned into its value, rounded.
    // The quotient is a truncated single-precision one, exact here because the
    // rounded sum and the total stay below 2^24 together.
    std::uint8_t Finish(std::uint32_t sum) const {
        return static_cast<std::uint8_t>(static_cast<int>(static_cast<float>(sum + m_half) / m_total));
    }

    // The most taps any target sample has.
    int WidestCount() const { return m_widestCount; }
    // At most two taps whose weights add up to 256: Finish(sum) is then
    // (sum + 128) >> 8, and the rounded sums fit 16 bits.
    bool IsTwoTapsOf256() const { return m_widestCount <= 2 && m_total == 256.0f && m_half == 128; }
    // What Finish adds to a sum before dividing it by the total.
    std::uint32_t Half() const { return m_half; }
    float Total() const { return m_total; }
    // Finish for a run of sums at once.
    void FinishAll(const std::uint32_t* sums, std::uint8_t* out, std::size_t count) const;

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
    int m_sourceLength = 0;
    int m_targetLength = 0;
    int m_widestCount = 0;
    std::uint32_t m_half = 0;
    float m_total = 1.0f;
};
