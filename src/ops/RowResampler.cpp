#include "ops/RowResampler.h"

#include <algorithm>

namespace ops {

int ResampleKernel::Init(int sourceLength, int targetLength) {
    m_targetLength = 0;
    if (sourceLength <= 0 || targetLength <= 0) {
        return 0;
    }
    const auto weights = static_cast<std::size_t>(sourceLength) + 2 * static_cast<std::size_t>(targetLength);
    m_taps = platform::HeapBlock::Allocate(static_cast<std::size_t>(targetLength) * sizeof(Tap));
    m_weights = platform::HeapBlock::Allocate(weights * sizeof(std::int32_t));
    if (!m_taps || !m_weights) {
        m_taps.reset();
        m_weights.reset();
        return 0;
    }
    if (targetLength <= sourceLength) {
        InitArea(sourceLength, targetLength);
    } else {
        InitBilinear(sourceLength, targetLength);
    }
    m_targetLength = targetLength;
    return 1;
}

// Target sample i covers [i x S, (i + 1) x S) in units where source sample k
// covers [k x T, (k + 1) x T); each source sample weighs its overlap (the
// overlaps add up to S), scaled to 1/65536 with the rounding remainder given
// to the largest weight.
void ResampleKernel::InitArea(int sourceLength, int targetLength) {
    auto* taps = reinterpret_cast<Tap*>(m_taps.data());
    auto* weights = reinterpret_cast<std::int32_t*>(m_weights.data());
    const std::int64_t s = sourceLength;
    const std::int64_t t = targetLength;
    std::int32_t offset = 0;
    for (std::int64_t i = 0; i < t; ++i) {
        const std::int64_t begin = i * s;
        const std::int64_t end = begin + s;
        const auto first = static_cast<std::int32_t>(begin / t);
        const auto last = static_cast<std::int32_t>((end - 1) / t);
        taps[i] = {first, last - first + 1, offset};
        std::int32_t total = 0;
        std::int32_t largest = offset;
        for (std::int64_t k = first; k <= last; ++k, ++offset) {
            const std::int64_t overlap = std::min((k + 1) * t, end) - std::max(k * t, begin);
            weights[offset] = static_cast<std::int32_t>(overlap * kOne / s);
            total += weights[offset];
            largest = weights[offset] > weights[largest] ? offset : largest;
        }
        weights[largest] += static_cast<std::int32_t>(kOne) - total;
    }
}

// Target sample i sits at source position (i + 0.5) x S / T - 0.5, kept in
// 1/256 of a sample and clamped to the line.
void ResampleKernel::InitBilinear(int sourceLength, int targetLength) {
    auto* taps = reinterpret_cast<Tap*>(m_taps.data());
    auto* weights = reinterpret_cast<std::int32_t*>(m_weights.data());
    const std::int64_t last = static_cast<std::int64_t>(sourceLength - 1) * 256;
    for (std::int64_t i = 0; i < targetLength; ++i) {
        const std::int64_t position =
            std::clamp((2 * i + 1) * sourceLength * 256 / (2 * targetLength) - 128, std::int64_t{0}, last);
        const auto first = static_cast<std::int32_t>(position >> 8);
        const auto fraction = static_cast<std::int32_t>(position & 255);
        const auto offset = static_cast<std::int32_t>(2 * i);
        taps[i] = {first, first + 1 < sourceLength ? 2 : 1, offset};
        weights[offset] = (256 - fraction) * 256;
        weights[offset + 1] = fraction * 256;
    }
}

void RowResampler::Resample(const std::uint8_t* sourceRow, std::uint8_t* targetRow) const {
    const int width = m_kernel.TargetLength();
    for (int i = 0; i < width; ++i, targetRow += 3) {
        const std::uint8_t* in = sourceRow + 3 * m_kernel.First(i);
        const std::int32_t* weight = m_kernel.Weights(i);
        std::uint32_t blue = 0;
        std::uint32_t green = 0;
        std::uint32_t red = 0;
        for (int k = 0; k < m_kernel.Count(i); ++k, in += 3) {
            const auto w = static_cast<std::uint32_t>(weight[k]);
            blue += w * in[0];
            green += w * in[1];
            red += w * in[2];
        }
        targetRow[0] = m_kernel.Finish(blue);
        targetRow[1] = m_kernel.Finish(green);
        targetRow[2] = m_kernel.Finish(red);
    }
}

} // namespace ops
