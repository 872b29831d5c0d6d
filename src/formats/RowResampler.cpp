#include "formats/RowResampler.h"

#include <algorithm>

RowResampler::RowResampler(int sourceWidth, int targetWidth)
    : m_sourceWidth(sourceWidth), m_targetWidth(targetWidth) {
    if (sourceWidth <= 0 || targetWidth <= 0) {
        return;
    }
    const auto targets = static_cast<std::size_t>(targetWidth);
    // Every target pixel covers at most ceil(source/target) + 1 source pixels,
    // and all of them together at most source + target.
    const std::size_t pairs = static_cast<std::size_t>(sourceWidth) + targets;
    m_first = platform::HeapBlock::Allocate(targets * sizeof(std::int32_t));
    m_count = platform::HeapBlock::Allocate(targets * sizeof(std::int32_t));
    m_weights = platform::HeapBlock::Allocate(pairs * sizeof(std::uint32_t));
    if (!m_first || !m_count || !m_weights) {
        m_first.reset();
        return;
    }
    auto* first = reinterpret_cast<std::int32_t*>(m_first.data());
    auto* count = reinterpret_cast<std::int32_t*>(m_count.data());
    auto* weights = reinterpret_cast<std::uint32_t*>(m_weights.data());
    // In units of 1/targetWidth source pixel, target pixel x spans
    // [x * source, (x + 1) * source) and source pixel i spans
    // [i * target, (i + 1) * target).
    const auto source64 = static_cast<std::int64_t>(sourceWidth);
    const auto target64 = static_cast<std::int64_t>(targetWidth);
    std::size_t next = 0;
    for (std::int64_t x = 0; x < target64; ++x) {
        const std::int64_t begin = x * source64;
        const std::int64_t end = begin + source64;
        const std::int64_t i0 = begin / target64;
        first[x] = static_cast<std::int32_t>(i0);
        std::int32_t n = 0;
        for (std::int64_t i = i0; i * target64 < end && i < source64; ++i) {
            const std::int64_t overlap = std::min(end, (i + 1) * target64) - std::max(begin, i * target64);
            weights[next++] = static_cast<std::uint32_t>(overlap);
            ++n;
        }
        count[x] = n;
    }
}

void RowResampler::Resample(const std::uint8_t* source, std::uint8_t* target) const {
    const auto* first = reinterpret_cast<const std::int32_t*>(m_first.data());
    const auto* count = reinterpret_cast<const std::int32_t*>(m_count.data());
    const auto* weight = reinterpret_cast<const std::uint32_t*>(m_weights.data());
    const auto total = static_cast<std::uint64_t>(m_sourceWidth);
    const std::uint64_t half = total / 2;
    for (int x = 0; x < m_targetWidth; ++x) {
        const std::uint8_t* pixel = source + static_cast<std::size_t>(first[x]) * 3;
        std::uint64_t blue = 0;
        std::uint64_t green = 0;
        std::uint64_t red = 0;
        for (int k = 0; k < count[x]; ++k, pixel += 3) {
            const std::uint64_t w = *weight++;
            blue += w * pixel[0];
            green += w * pixel[1];
            red += w * pixel[2];
        }
        target[0] = static_cast<std::uint8_t>((blue + half) / total);
        target[1] = static_cast<std::uint8_t>((green + half) / total);
        target[2] = static_cast<std::uint8_t>((red + half) / total);
        target += 3;
    }
}
