#include "ops/RotationSampler.h"

#include "image/CDibImage.h"

#include <algorithm>
#include <cstring>
#include <limits>

#if defined(__GNUC__) && defined(__x86_64__)
#include "ops/VectorPixels.h"
#define TAMRICK_ROTATION_AVX2 1
#else
#define TAMRICK_ROTATION_AVX2 0
#endif

namespace {

// Rounds half away from zero: the nearest source pixel of a sample point.
inline int RoundAway(double v) {
    return static_cast<int>(v < 0.0 ? v - 0.5 : v + 0.5);
}

// The first x in [0, count) for which `holds` is false, where it holds on a
// prefix.
template <class Predicate> int PrefixEnd(int count, const Predicate& holds) {
    int low = 0;
    int high = count;
    while (low < high) {
        const int mid = low + (high - low) / 2;
        if (holds(mid)) {
            low = mid + 1;
        } else {
            high = mid;
        }
    }
    return low;
}

// The columns x whose nearest source coordinate RoundAway(table[x] + shift)
// lies in [0, limit). The coordinate is monotonic in x (the table is a running
// sum of one step and the additions round monotonically), so they form one
// interval.
void CoveredInterval(const double* table, double shift, int count, int limit, int& begin, int& end) {
    const auto at = [&](int x) { return RoundAway(table[x] + shift); };
    if (at(0) <= at(count - 1)) {
        begin = PrefixEnd(count, [&](int x) { return at(x) < 0; });
        end = PrefixEnd(count, [&](int x) { return at(x) < limit; });
    } else {
        begin = PrefixEnd(count, [&](int x) { return at(x) >= limit; });
        end = PrefixEnd(count, [&](int x) { return at(x) >= 0; });
    }
}

#if TAMRICK_ROTATION_AVX2
bool HasAvx2() {
    static const bool has = __builtin_cpu_supports("avx2");
    return has;
}
bool HasAvx512() {
    static const bool has = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw");
    return has;
}
#endif

} // namespace

RotationSampler::RotationSampler(const CDibImage& source, int targetWidth, double sourceCenterX,
                                 double sourceCenterY, double targetCenterX, double sine, double cosine,
                                 ColorWord fill)
    : m_bits(source.Bits()),
      m_sourceRowBytes(source.RowBytes()),
      m_sourceBytes(static_cast<std::size_t>(source.RowBytes()) * source.Height()),
      m_sourceWidth(source.Width()),
      m_sourceHeight(source.Height()),
      m_width(targetWidth),
      m_fill{static_cast<std::uint8_t>(BlueOf(fill)), static_cast<std::uint8_t>(GreenOf(fill)),
             static_cast<std::uint8_t>(RedOf(fill))} {
    const std::size_t bytes = static_cast<std::size_t>(targetWidth) * sizeof(double);
    m_columnX = platform::HeapBlock::Allocate(bytes);
    m_columnY = platform::HeapBlock::Allocate(bytes);
    if (!m_columnX || !m_columnY) {
        m_columnX.reset();
        return;
    }
    auto* columnX = reinterpret_cast<double*>(m_columnX.data());
    auto* columnY = reinterpret_cast<double*>(m_columnY.data());
    double columnSin = -targetCenterX * sine;
    double columnCos = -targetCenterX * cosine;
    for (int x = 0; x < targetWidth; ++x) {
        columnX[x] = sourceCenterX + columnCos;
        columnY[x] = sourceCenterY - columnSin;
        columnSin += sine;
        columnCos += cosine;
    }
}

RotationSampler::Span RotationSampler::CoveredSpan(double rowSin, double rowCos) const {
    int beginX = 0;
    int endX = 0;
    int beginY = 0;
    int endY = 0;
    CoveredInterval(reinterpret_cast<const double*>(m_columnX.data()), rowSin, m_width, m_sourceWidth, beginX,
                    endX);
    CoveredInterval(reinterpret_cast<const double*>(m_columnY.data()), rowCos, m_width, m_sourceHeight, beginY,
                    endY);
    const int begin = std::max(beginX, beginY);
    const int end = std::min(endX, endY);
    return begin < end ? Span{begin, end} : Span{0, 0};
}

void RotationSampler::FillPixels(std::uint8_t* row, int count) const {
    if (count <= 0) {
        return;
    }
    std::memcpy(row, m_fill, 3);
    // Doubling copies of the pixels already filled.
    const std::size_t total = 3 * static_cast<std::size_t>(count);
    for (std::size_t done = 3; done < total;) {
        const std::size_t chunk = std::min(done, total - done);
        std::memcpy(row + done, row, chunk);
        done += chunk;
    }
}

void RotationSampler::SampleRow(double rowSin, double rowCos, std::uint8_t* row) const {
    const Span span = CoveredSpan(rowSin, rowCos);
    FillPixels(row, span.begin);
    SampleSpan(rowSin, rowCos, span.begin, span.end, row);
    FillPixels(row + 3 * static_cast<std::size_t>(span.end), m_width - span.end);
}

// The four source pixels around the sample point, clamped to the picture,
// blended with 8-bit weights.
void RotationSampler::SampleSpan(double rowSin, double rowCos, int begin, int end, std::uint8_t* row) const {
    const auto* columnX = reinterpret_cast<const double*>(m_columnX.data());
    const auto* columnY = reinterpret_cast<const double*>(m_columnY.data());
    int x = SampleVectorised(rowSin, rowCos, begin, end, row);
    for (; x < end; ++x) {
        const double fx = std::clamp(columnX[x] + rowSin, 0.0, m_sourceWidth - 1.0);
        const double fy = std::clamp(columnY[x] + rowCos, 0.0, m_sourceHeight - 1.0);
        const int x0 = static_cast<int>(fx);
        const int y0 = static_cast<int>(fy);
        const int x1 = std::min(x0 + 1, m_sourceWidth - 1);
        const int y1 = std::min(y0 + 1, m_sourceHeight - 1);
        const int wx = static_cast<int>((fx - x0) * 256.0 + 0.5);
        const int wy = static_cast<int>((fy - y0) * 256.0 + 0.5);
        const std::uint8_t* top = m_bits + static_cast<std::size_t>(m_sourceHeight - 1 - y0) * m_sourceRowBytes;
        const std::uint8_t* bottom =
            m_bits + static_cast<std::size_t>(m_sourceHeight - 1 - y1) * m_sourceRowBytes;
        std::uint8_t* out = row + 3 * static_cast<std::size_t>(x);
        for (int ch = 0; ch < 3; ++ch) {
            const int upper = top[3 * x0 + ch] * (256 - wx) + top[3 * x1 + ch] * wx;
            const int lower = bottom[3 * x0 + ch] * (256 - wx) + bottom[3 * x1 + ch] * wx;
            out[ch] = static_cast<std::uint8_t>((upper * (256 - wy) + lower * wy + 32768) >> 16);
        }
    }
}

#if TAMRICK_ROTATION_AVX2
namespace {

// Integer sample positions and weights of four target pixels, with the same
// roundings as the plain loop.
__attribute__((target("avx2"))) inline void PositionsOfFour(__m256d sx, __m256d sy, __m256d maxX,
                                                            __m256d maxY, __m128i& x0, __m128i& y0,
                                                            __m128i& wx, __m128i& wy) {
    const __m256d zero = _mm256_setzero_pd();
    const __m256d scale = _mm256_set1_pd(256.0);
    const __m256d half = _mm256_set1_pd(0.5);
    const __m256d fx = _mm256_min_pd(_mm256_max_pd(sx, zero), maxX);
    const __m256d fy = _mm256_min_pd(_mm256_max_pd(sy, zero), maxY);
    x0 = _mm256_cvttpd_epi32(fx);
    y0 = _mm256_cvttpd_epi32(fy);
    const __m256d fracX = _mm256_sub_pd(fx, _mm256_cvtepi32_pd(x0));
    const __m256d fracY = _mm256_sub_pd(fy, _mm256_cvtepi32_pd(y0));
    wx = _mm256_cvttpd_epi32(_mm256_add_pd(_mm256_mul_pd(fracX, scale), half));
    wy = _mm256_cvttpd_epi32(_mm256_add_pd(_mm256_mul_pd(fracY, scale), half));
}

// One channel (at bit `shift` of each gathered word) of eight pixels.
template <int shift>
__attribute__((target("avx2"))) inline __m256i BlendChannel(__m256i topLeft, __m256i topRight,
                                                            __m256i bottomLeft, __m256i bottomRight,
                                                            __m256i weightX, __m256i weightY) {
    const __m256i low = _mm256_set1_epi32(0xFF);
    const __m256i high = _mm256_set1_epi32(0xFF0000);
    const __m256i top = _mm256_or_si256(_mm256_and_si256(_mm256_srli_epi32(topLeft, shift), low),
                                        _mm256_and_si256(_mm256_slli_epi32(topRight, 16 - shift), high));
    const __m256i bottom = _mm256_or_si256(_mm256_and_si256(_mm256_srli_epi32(bottomLeft, shift), low),
                                           _mm256_and_si256(_mm256_slli_epi32(bottomRight, 16 - shift), high));
    const __m256i upper = _mm256_madd_epi16(top, weightX);
    const __m256i lower = _mm256_madd_epi16(bottom, weightX);
    // upper (256 - wy) + lower wy + 32768, with one multiplication.
    const __m256i sum = _mm256_add_epi32(_mm256_add_epi32(_mm256_slli_epi32(upper, 8),
                                                          _mm256_mullo_epi32(_mm256_sub_epi32(lower, upper),
                                                                             weightY)),
                                         _mm256_set1_epi32(32768));
    return _mm256_srli_epi32(sum, 16);
}

// GCC 12 takes the unset pass-through operand inside its AVX-512 conversion
// and min/max intrinsics for an uninitialised value (clang has no such
// warning and would warn about the unknown name).
#if !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
// Whole sample coordinates and 8-bit weights along one axis of sixteen
// pixels, from their table entries plus the row's shift.
__attribute__((target("avx512f,avx512bw"))) inline void PositionsOfSixteen(const double* table, __m512d shift,
                                                                           __m512d max, __m512i& whole,
                                                                           __m512i& weight) {
    const __m512d zero = _mm512_setzero_pd();
    const __m512d scale = _mm512_set1_pd(256.0);
    const __m512d half = _mm512_set1_pd(0.5);
    const __m512d first = _mm512_min_pd(_mm512_max_pd(_mm512_add_pd(_mm512_loadu_pd(table), shift), zero), max);
    const __m512d second = _mm512_min_pd(_mm512_max_pd(_mm512_add_pd(_mm512_loadu_pd(table + 8), shift), zero), max);
    const __m256i wholeFirst = _mm512_cvttpd_epi32(first);
    const __m256i wholeSecond = _mm512_cvttpd_epi32(second);
    const __m256i weightFirst = _mm512_cvttpd_epi32(
        _mm512_add_pd(_mm512_mul_pd(_mm512_sub_pd(first, _mm512_cvtepi32_pd(wholeFirst)), scale), half));
    const __m256i weightSecond = _mm512_cvttpd_epi32(
        _mm512_add_pd(_mm512_mul_pd(_mm512_sub_pd(second, _mm512_cvtepi32_pd(wholeSecond)), scale), half));
    whole = _mm512_inserti64x4(_mm512_castsi256_si512(wholeFirst), wholeSecond, 1);
    weight = _mm512_inserti64x4(_mm512_castsi256_si512(weightFirst), weightSecond, 1);
}

// Each lane's pixel and the one to its right, from one 8-byte read per lane.
// The right pixel is read even at the row's last pixel: its weight is 0 there
// (the sample sits exactly on the last column), so what follows does not count.
__attribute__((target("avx512f,avx512bw"))) inline void GatherPixelPairs(const long long* bits, __m512i offsets,
                                                                         __m512i& left, __m512i& right) {
    const __m512i low = _mm512_i32gather_epi64(_mm512_castsi512_si256(offsets), bits, 1);
    const __m512i high = _mm512_i32gather_epi64(_mm512_extracti64x4_epi64(offsets, 1), bits, 1);
    left = _mm512_inserti64x4(_mm512_castsi256_si512(_mm512_cvtepi64_epi32(low)), _mm512_cvtepi64_epi32(high), 1);
    right = _mm512_inserti64x4(_mm512_castsi256_si512(_mm512_cvtepi64_epi32(_mm512_srli_epi64(low, 24))),
                               _mm512_cvtepi64_epi32(_mm512_srli_epi64(high, 24)), 1);
}

} // namespace

// Sixteen pixels per step, as the eight-pixel loop below does them, with one
// 8-byte read for both pixels of a row.
__attribute__((target("avx512f,avx512bw"))) int RotationSampler::SampleSixteen(double rowSin, double rowCos,
                                                                               int begin, int end,
                                                                               std::uint8_t* row) const {
    const auto* columnX = reinterpret_cast<const double*>(m_columnX.data());
    const auto* columnY = reinterpret_cast<const double*>(m_columnY.data());
    const __m512d shiftX = _mm512_set1_pd(rowSin);
    const __m512d shiftY = _mm512_set1_pd(rowCos);
    const __m512d maxX = _mm512_set1_pd(m_sourceWidth - 1.0);
    const __m512d maxY = _mm512_set1_pd(m_sourceHeight - 1.0);
    const __m512i lastY = _mm512_set1_epi32(m_sourceHeight - 1);
    const __m512i one = _mm512_set1_epi32(1);
    const __m512i rowBytes = _mm512_set1_epi32(static_cast<int>(m_sourceRowBytes));
    const __m512i lastSafe = _mm512_set1_epi32(static_cast<int>(m_sourceBytes) - 8);
    const __m512i full = _mm512_set1_epi32(256);
    const __m512i low = _mm512_set1_epi32(0xFF);
    const __m512i high = _mm512_set1_epi32(0xFF0000);
    const __m512i rounding = _mm512_set1_epi32(32768);
    const __m512i pack = _mm512_set4_epi32(-1, 0x0E0D0C0A, 0x09080605, 0x04020100);
    const __m512i join = _mm512_setr_epi32(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 3, 7, 11, 15);
    const auto* bits = reinterpret_cast<const long long*>(m_bits);
    int x = begin;
    for (; x + 16 <= end; x += 16) {
        __m512i x0, wx, y0, wy;
        PositionsOfSixteen(columnX + x, shiftX, maxX, x0, wx);
        PositionsOfSixteen(columnY + x, shiftY, maxY, y0, wy);
        const __m512i y1 = _mm512_min_epi32(_mm512_add_epi32(y0, one), lastY);
        const __m512i column = _mm512_add_epi32(x0, _mm512_add_epi32(x0, x0));
        const __m512i first = _mm512_add_epi32(_mm512_mullo_epi32(_mm512_sub_epi32(lastY, y0), rowBytes), column);
        const __m512i second = _mm512_add_epi32(_mm512_mullo_epi32(_mm512_sub_epi32(lastY, y1), rowBytes), column);
        // The top row lies highest in memory.
        if (_mm512_cmpgt_epi32_mask(first, lastSafe) != 0) {
            break;
        }
        __m512i topLeft, topRight, bottomLeft, bottomRight;
        GatherPixelPairs(bits, first, topLeft, topRight);
        GatherPixelPairs(bits, second, bottomLeft, bottomRight);
        const __m512i weightX = _mm512_or_si512(_mm512_sub_epi32(full, wx), _mm512_slli_epi32(wx, 16));
        __m512i pixels = _mm512_setzero_si512();
        for (int shift = 0; shift <= 16; shift += 8) {
            const __m512i top = _mm512_or_si512(
                _mm512_and_si512(_mm512_srl_epi32(topLeft, _mm_cvtsi32_si128(shift)), low),
                _mm512_and_si512(_mm512_sll_epi32(topRight, _mm_cvtsi32_si128(16 - shift)), high));
            const __m512i bottom = _mm512_or_si512(
                _mm512_and_si512(_mm512_srl_epi32(bottomLeft, _mm_cvtsi32_si128(shift)), low),
                _mm512_and_si512(_mm512_sll_epi32(bottomRight, _mm_cvtsi32_si128(16 - shift)), high));
            const __m512i upper = _mm512_madd_epi16(top, weightX);
            const __m512i lower = _mm512_madd_epi16(bottom, weightX);
            const __m512i sum = _mm512_add_epi32(
                _mm512_add_epi32(_mm512_slli_epi32(upper, 8), _mm512_mullo_epi32(_mm512_sub_epi32(lower, upper), wy)),
                rounding);
            pixels = _mm512_or_si512(pixels, _mm512_sll_epi32(_mm512_srli_epi32(sum, 16), _mm_cvtsi32_si128(shift)));
        }
        const __m512i packed = _mm512_permutexvar_epi32(join, _mm512_shuffle_epi8(pixels, pack));
        _mm512_mask_storeu_epi32(row + 3 * static_cast<std::size_t>(x), 0x0FFF, packed);
    }
    return x;
}

#if !defined(__clang__)
#pragma GCC diagnostic pop
#endif

// Eight pixels per step while their source pixels can be read as 4-byte words
// without passing the end of the picture; returns where it stopped.
__attribute__((target("avx2"))) int RotationSampler::SampleVectorised(double rowSin, double rowCos, int begin,
                                                                      int end, std::uint8_t* row) const {
    if (!HasAvx2() || m_sourceBytes > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        return begin;
    }
    if (HasAvx512()) {
        begin = SampleSixteen(rowSin, rowCos, begin, end, row);
    }
    const auto* columnX = reinterpret_cast<const double*>(m_columnX.data());
    const auto* columnY = reinterpret_cast<const double*>(m_columnY.data());
    const __m256d shiftX = _mm256_set1_pd(rowSin);
    const __m256d shiftY = _mm256_set1_pd(rowCos);
    const __m256d maxX = _mm256_set1_pd(m_sourceWidth - 1.0);
    const __m256d maxY = _mm256_set1_pd(m_sourceHeight - 1.0);
    const __m256i lastX = _mm256_set1_epi32(m_sourceWidth - 1);
    const __m256i lastY = _mm256_set1_epi32(m_sourceHeight - 1);
    const __m256i one = _mm256_set1_epi32(1);
    const __m256i rowBytes = _mm256_set1_epi32(static_cast<int>(m_sourceRowBytes));
    const __m256i lastSafe = _mm256_set1_epi32(static_cast<int>(m_sourceBytes) - 4);
    const __m256i full = _mm256_set1_epi32(256);
    const auto* bits = reinterpret_cast<const int*>(m_bits);
    int x = begin;
    for (; x + 8 <= end; x += 8) {
        __m128i x0Low, y0Low, wxLow, wyLow, x0High, y0High, wxHigh, wyHigh;
        PositionsOfFour(_mm256_add_pd(_mm256_loadu_pd(columnX + x), shiftX),
                        _mm256_add_pd(_mm256_loadu_pd(columnY + x), shiftY), maxX, maxY, x0Low, y0Low, wxLow,
                        wyLow);
        PositionsOfFour(_mm256_add_pd(_mm256_loadu_pd(columnX + x + 4), shiftX),
                        _mm256_add_pd(_mm256_loadu_pd(columnY + x + 4), shiftY), maxX, maxY, x0High, y0High,
                        wxHigh, wyHigh);
        const __m256i x0 = _mm256_set_m128i(x0High, x0Low);
        const __m256i y0 = _mm256_set_m128i(y0High, y0Low);
        const __m256i wx = _mm256_set_m128i(wxHigh, wxLow);
        const __m256i wy = _mm256_set_m128i(wyHigh, wyLow);
        const __m256i x1 = _mm256_min_epi32(_mm256_add_epi32(x0, one), lastX);
        const __m256i y1 = _mm256_min_epi32(_mm256_add_epi32(y0, one), lastY);
        const __m256i column = _mm256_add_epi32(x0, _mm256_add_epi32(x0, x0));
        const __m256i first = _mm256_add_epi32(_mm256_mullo_epi32(_mm256_sub_epi32(lastY, y0), rowBytes), column);
        const __m256i second =
            _mm256_add_epi32(_mm256_mullo_epi32(_mm256_sub_epi32(lastY, y1), rowBytes), column);
        const __m256i gap = _mm256_sub_epi32(x1, x0);
        const __m256i step = _mm256_add_epi32(gap, _mm256_add_epi32(gap, gap));
        // The top row lies highest in memory; its right pixel is the last byte read.
        if (!_mm256_testz_si256(_mm256_cmpgt_epi32(_mm256_add_epi32(first, step), lastSafe),
                                _mm256_set1_epi32(-1))) {
            break;
        }
        const __m256i topLeft = _mm256_i32gather_epi32(bits, first, 1);
        const __m256i topRight = _mm256_i32gather_epi32(bits, _mm256_add_epi32(first, step), 1);
        const __m256i bottomLeft = _mm256_i32gather_epi32(bits, second, 1);
        const __m256i bottomRight = _mm256_i32gather_epi32(bits, _mm256_add_epi32(second, step), 1);
        const __m256i weightX = _mm256_or_si256(_mm256_sub_epi32(full, wx), _mm256_slli_epi32(wx, 16));
        const __m256i blue = BlendChannel<0>(topLeft, topRight, bottomLeft, bottomRight, weightX, wy);
        const __m256i green = BlendChannel<8>(topLeft, topRight, bottomLeft, bottomRight, weightX, wy);
        const __m256i red = BlendChannel<16>(topLeft, topRight, bottomLeft, bottomRight, weightX, wy);
        const __m256i pixels = ops::JoinChannels(blue, green, red);
        ops::StoreEightPixels(pixels, row + 3 * static_cast<std::size_t>(x));
    }
    return x;
}
#else
int RotationSampler::SampleVectorised(double, double, int begin, int, std::uint8_t*) const {
    return begin;
}
#endif
