#include "ops/RowResampler.h"

#include <algorithm>
#include <cstring>

#if defined(__GNUC__) && defined(__x86_64__)
#include "ops/VectorPixels.h"
#define TAMRICK_RESAMPLE_AVX2 1
#else
#define TAMRICK_RESAMPLE_AVX2 0
#endif

namespace {
constexpr int kLanes = 8;

#if TAMRICK_RESAMPLE_AVX2
bool HasAvx2() {
    static const bool has = __builtin_cpu_supports("avx2");
    return has;
}
#endif
} // namespace

RowResampler::RowResampler(int sourceWidth, int targetWidth) : m_kernel(sourceWidth, targetWidth) {
    if (m_kernel.IsValid()) {
        BuildPaddedTaps();
    }
}

void RowResampler::BuildPaddedTaps() {
    const int width = m_kernel.TargetLength();
    const int sourceWidth = m_kernel.SourceLength();
    m_widestCount = m_kernel.WidestCount();
    m_firsts = platform::HeapBlock::Allocate(static_cast<std::size_t>(width) * sizeof(std::int32_t));
    m_padded = platform::HeapBlock::Allocate(static_cast<std::size_t>(width) * m_widestCount * sizeof(std::int32_t));
    if (!m_firsts || !m_padded) {
        m_firsts.reset();
        return;
    }
    auto* firsts = reinterpret_cast<std::int32_t*>(m_firsts.data());
    auto* padded = reinterpret_cast<std::int32_t*>(m_padded.data());
    m_vectorEnd = 0;
    for (int i = 0; i < width; ++i) {
        firsts[i] = m_kernel.First(i);
        for (int k = 0; k < m_kernel.Count(i); ++k) {
            padded[static_cast<std::size_t>(k) * width + i] = m_kernel.Weights(i)[k];
        }
        // Padded taps read up to pixel First(i) + widest - 1, as a 4-byte word.
        if (firsts[i] + m_widestCount <= sourceWidth - 1) {
            m_vectorEnd = i + 1;
        }
    }
    m_vectorEnd -= m_vectorEnd % kLanes;
}

void RowResampler::Resample(const std::uint8_t* source, std::uint8_t* target) const {
    if (SourceWidth() == TargetWidth()) { // keeping the length copies the row
        std::memcpy(target, source, 3 * static_cast<std::size_t>(TargetWidth()));
        return;
    }
    ResampleFrom(ResampleVectorised(source, target), source, target);
}

void RowResampler::ResampleFrom(int first, const std::uint8_t* source, std::uint8_t* target) const {
    const int width = m_kernel.TargetLength();
    target += 3 * static_cast<std::size_t>(first);
    for (int i = first; i < width; ++i, target += 3) {
        const std::uint8_t* in = source + 3 * static_cast<std::size_t>(m_kernel.First(i));
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
        target[0] = m_kernel.Finish(blue);
        target[1] = m_kernel.Finish(green);
        target[2] = m_kernel.Finish(red);
    }
}

#if TAMRICK_RESAMPLE_AVX2
namespace {
// The kernel's Finish on eight sums: the same float quotient, truncated.
__attribute__((target("avx2"))) inline __m256i FinishEight(__m256i sums, __m256i half, __m256 total) {
    return _mm256_cvttps_epi32(_mm256_div_ps(_mm256_cvtepi32_ps(_mm256_add_epi32(sums, half)), total));
}
} // namespace

// Eight target pixels at a time: each padded tap gathers the eight source
// pixels as 4-byte words and adds weight x byte to the three channel sums.
__attribute__((target("avx2"))) int RowResampler::ResampleVectorised(const std::uint8_t* source,
                                                                     std::uint8_t* target) const {
    if (!HasAvx2()) {
        return 0;
    }
    const int width = m_kernel.TargetLength();
    const auto* firsts = reinterpret_cast<const std::int32_t*>(m_firsts.data());
    const auto* padded = reinterpret_cast<const std::int32_t*>(m_padded.data());
    const auto* words = reinterpret_cast<const int*>(source);
    const __m256i byteMask = _mm256_set1_epi32(0xFF);
    const __m256i three = _mm256_set1_epi32(3);
    const __m256i half = _mm256_set1_epi32(static_cast<int>(m_kernel.Half()));
    const __m256 total = _mm256_set1_ps(m_kernel.Total());
    int i = 0;
    for (; i < m_vectorEnd; i += kLanes) {
        __m256i offset = _mm256_mullo_epi32(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(firsts + i)), three);
        __m256i blue = _mm256_setzero_si256();
        __m256i green = _mm256_setzero_si256();
        __m256i red = _mm256_setzero_si256();
        const std::int32_t* weights = padded + i;
        for (int k = 0; k < m_widestCount; ++k, weights += width) {
            const __m256i pixel = _mm256_i32gather_epi32(words, offset, 1);
            const __m256i weight = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(weights));
            blue = _mm256_add_epi32(blue, _mm256_mullo_epi32(_mm256_and_si256(pixel, byteMask), weight));
            green = _mm256_add_epi32(
                green, _mm256_mullo_epi32(_mm256_and_si256(_mm256_srli_epi32(pixel, 8), byteMask), weight));
            red = _mm256_add_epi32(red,
                                   _mm256_mullo_epi32(_mm256_and_si256(_mm256_srli_epi32(pixel, 16), byteMask), weight));
            offset = _mm256_add_epi32(offset, three);
        }
        const __m256i pixels = ops::JoinChannels(FinishEight(blue, half, total), FinishEight(green, half, total),
                                                 FinishEight(red, half, total));
        ops::StoreEightPixels(pixels, target + 3 * static_cast<std::size_t>(i));
    }
    return i;
}
#else
int RowResampler::ResampleVectorised(const std::uint8_t*, std::uint8_t*) const {
    return 0;
}
#endif
