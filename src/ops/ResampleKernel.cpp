#include "ops/ResampleKernel.h"

#include "ops/FilterMath.h"

#include <algorithm>

namespace {
// Sums of bytes times weights stay exact in single precision below this.
constexpr std::int64_t kExactFloat = std::int64_t{1} << 24;
} // namespace

int ResampleKernel::Init(int sourceLength, int targetLength) {
    m_targetLength = 0;
    // 255 x the weights' total (at most the source length, or 256) plus the
    // total must stay exact in single precision.
    if (sourceLength <= 0 || targetLength <= 0 || 256LL * std::max(sourceLength, 256) >= kExactFloat) {
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
    m_sourceLength = sourceLength;
    m_targetLength = targetLength;
    m_widestCount = 0;
    for (int i = 0; i < targetLength; ++i) {
        m_widestCount = std::max(m_widestCount, Count(i));
    }
    return 1;
}

// Target sample i covers [i x S, (i + 1) x S) in units where source sample k
// covers [k x T, (k + 1) x T); each source sample weighs its overlap, and the
// overlaps add up to S.
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
        for (std::int64_t k = first; k <= last; ++k) {
            weights[offset++] =
                static_cast<std::int32_t>(std::min((k + 1) * t, end) - std::max(k * t, begin));
        }
    }
    m_half = static_cast<std::uint32_t>(sourceLength / 2);
    m_total = static_cast<float>(sourceLength);
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
        weights[offset] = 256 - fraction;
        weights[offset + 1] = fraction;
    }
    m_half = 128;
    m_total = 256.0f;
}

namespace {
// The rounded sums stay below 2^24, so they convert as signed words (which
// vector units do directly) to the same floats.
TAMRICK_VECTOR_CLONES void FinishRun(const std::uint32_t* __restrict sums, std::uint8_t* __restrict out,
                                     std::size_t count, std::uint32_t half, float total) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto rounded = static_cast<std::int32_t>(sums[i] + half);
        out[i] = static_cast<std::uint8_t>(static_cast<int>(static_cast<float>(rounded) / total));
    }
}
} // namespace

void ResampleKernel::FinishAll(const std::uint32_t* sums, std::uint8_t* out, std::size_t count) const {
    FinishRun(sums, out, count, m_half, m_total);
}
