#include "formats/BmpFusedKernels.h"

#include "ops/FilterMath.h"

#include <bit>

namespace bmp_fused_kernels {

namespace {

constexpr int kWidestChannel = 12;

// Where a mask's bits lie: the top kWidestChannel bits of a wider one; bits 0
// for an absent channel.
struct Field {
    int shift = 0;
    int bits = 0;
    std::uint32_t Most() const { return (1u << bits) - 1; }
};

Field FieldOf(std::uint32_t mask) {
    if (mask == 0) {
        return {};
    }
    const int shift = std::countr_zero(mask);
    const int bits = 32 - std::countl_zero(mask) - shift;
    const int drop = bits > kWidestChannel ? bits - kWidestChannel : 0;
    return {shift + drop, bits - drop};
}

constexpr std::uint32_t ScaleOf(std::uint32_t v, std::uint32_t most) {
    return most == 0 ? 0 : (v * 255 + most / 2) / most;
}

// Found by search; checked for every value of every width below.
// clang-format off
constexpr WideScale kWideScales[kWidestChannel + 1] = {
    {true, 0, 0, 0, 0}, // an absent channel is 0
    {true, 15, 0, 510, 0},  {true, 14, 24, 340, 0}, {true, 13, 56, 292, 0}, {true, 12, 72, 272, 0},
    {true, 11, 90, 527, 1}, {true, 10, 131, 259, 0}, {true, 9, 128, 257, 0}, {true, 8, 0, 256, 0},
    {true, 7, 0, 256, 0},   {true, 5, 64, 1021, 1},  {},                     {true, 3, 64, 4081, 3},
};
// clang-format on

constexpr bool WideScaleIsExact(const WideScale& s, int bits) {
    const std::uint32_t most = (1u << bits) - 1;
    for (std::uint32_t v = 0; v <= most; ++v) {
        const std::uint32_t x = (v << s.shift) + s.add;
        if (x > 0xFFFF || ((x * s.multiplier) >> 16 >> s.after) != ScaleOf(v, most)) {
            return false;
        }
    }
    return true;
}

constexpr bool EveryWideScaleIsExact() {
    for (int bits = 1; bits <= kWidestChannel; ++bits) {
        if (kWideScales[bits].exists && !WideScaleIsExact(kWideScales[bits], bits)) {
            return false;
        }
    }
    return true;
}
static_assert(EveryWideScaleIsExact());

// Over white, n = v * a + 255 * (255 - a) + 127 lies in 127..65152, where
// n / 255 is (n + 1) * 257 >> 16 (see OverWhite).
constexpr bool QuotientBy255IsExact() {
    for (std::uint32_t n = 127; n <= 65152; ++n) {
        if (((n + 1) * 257) >> 16 != n / 255) {
            return false;
        }
    }
    return true;
}
static_assert(QuotientBy255IsExact());

bool IsWholeByte(const Field& field) {
    return field.bits == 8 && field.shift % 8 == 0;
}

// Output byte o of a row holds channel o % 3 (blue, green, red) of pixel o / 3.
void PlanBytes32(const Field (&bgr)[3], const Field& alpha, Plan& plan) {
    int at[3];
    for (int c = 0; c < 3; ++c) {
        at[c] = bgr[c].shift / 8;
    }
    if (alpha.bits == 0) {
        plan.kind = Kind::kBytes32;
        // Output register r (64 bytes) from input registers r and r + 1.
        for (int r = 0; r < 3; ++r) {
            for (int j = 0; j < 64; ++j) {
                const int o = 64 * r + j;
                plan.index[r][j] = static_cast<std::uint8_t>(4 * (o / 3) + at[o % 3] - 64 * r);
            }
        }
        return;
    }
    plan.kind = Kind::kBytes32OverWhite;
    plan.alphaByte = alpha.shift / 8;
    // 32 pixels give three registers of 16-bit lanes, values in output order
    // (index 0..2) and the alpha of each (3..5); index 6 packs low bytes.
    for (int t = 0; t < 3; ++t) {
        for (int lane = 0; lane < 32; ++lane) {
            const int o = 32 * t + lane;
            plan.index[t][2 * lane] = static_cast<std::uint8_t>(4 * (o / 3) + at[o % 3]);
            plan.index[3 + t][2 * lane] = static_cast<std::uint8_t>(4 * (o / 3) + plan.alphaByte);
        }
    }
    for (int j = 0; j < 64; ++j) {
        plan.index[6][j] = static_cast<std::uint8_t>(2 * j);
    }
}

// A register of 32 pixels (4 to a 64-bit group): X holds blue of the group's
// pixels in bytes 0..3 and green in 4..7, Y red in 0..3; green indices get
// bit 6 so that one two-register lookup serves blue and green.
void PlanNarrow16(const Field (&bgr)[3], Plan& plan) {
    plan.kind = Kind::kNarrow16;
    for (int j = 0; j < 64; ++j) {
        const int k = j % 4;
        const bool green = j % 8 >= 4;
        const Field& xField = green ? bgr[1] : bgr[0];
        plan.index[0][j] = static_cast<std::uint8_t>((16 * k + xField.shift) & 63);
        plan.index[1][j] = static_cast<std::uint8_t>((16 * k + bgr[2].shift) & 63);
        plan.index[2][j] = static_cast<std::uint8_t>(xField.Most());
        plan.index[3][j] = green ? 64 : 0;
    }
    for (int c = 0; c < 3; ++c) {
        const std::uint32_t most = bgr[c].Most();
        for (std::uint32_t i = 0; i < 64; ++i) {
            plan.tables[c][i] = static_cast<std::uint8_t>(ScaleOf(i & most, most));
        }
    }
    for (int o = 0; o < 96; ++o) {
        const int pixel = o / 3;
        const int group = 8 * (pixel / 4) + pixel % 4;
        const int from = o % 3 == 0 ? group : o % 3 == 1 ? group + 4 : 64 + group;
        plan.index[4 + o / 64][o % 64] = static_cast<std::uint8_t>(from);
    }
}

// A register of 16 pixels (2 to a 64-bit group): 16-bit lanes hold blue,
// green of the first pixel, blue, green of the second (register 1), red of
// the first twice, red of the second twice (register 2). Index 0 and 1 are
// the multi-shift controls, lanes 0..3 and 4..7 the mask, addend,
// multiplier and final shift of each lane.
void PlanWide32(const Field (&bgr)[3], Plan& plan) {
    plan.kind = Kind::kWide32;
    for (int lane = 0; lane < 32; ++lane) {
        const int pixel = (lane % 4) / 2;
        const Field* fields[2] = {lane % 2 == 0 ? &bgr[0] : &bgr[1], &bgr[2]};
        for (int r = 0; r < 2; ++r) {
            const Field& field = *fields[r];
            const WideScale& scale = kWideScales[field.bits];
            const int from = 32 * pixel + field.shift - scale.shift;
            plan.index[r][2 * lane] = static_cast<std::uint8_t>(from & 63);
            plan.index[r][2 * lane + 1] = static_cast<std::uint8_t>((from + 8) & 63);
            plan.lanes[4 * r][lane] = static_cast<std::uint16_t>(field.Most() << scale.shift);
            plan.lanes[4 * r + 1][lane] = scale.add;
            plan.lanes[4 * r + 2][lane] = scale.multiplier;
            plan.lanes[4 * r + 3][lane] = static_cast<std::uint16_t>(scale.after);
        }
    }
    for (int o = 0; o < 48; ++o) {
        const int pixel = o / 3;
        const int lane = 4 * (pixel / 2) + 2 * (pixel % 2) + (o % 3 == 1 ? 1 : 0);
        plan.index[2][o] = static_cast<std::uint8_t>((o % 3 == 2 ? 64 : 0) + 2 * lane);
    }
}

#if TAMRICK_HAS_BYTE_PERMUTES
// The zero-masking forms, for the plain ones start from an undefined register
// that the compiler warns about.
constexpr __mmask64 kAll = ~__mmask64{0};
constexpr __mmask64 kLow32 = 0xFFFFFFFFull;

TAMRICK_BYTE_PERMUTES inline __m512i Load(const std::array<std::uint8_t, 64>& bytes) {
    return _mm512_load_si512(bytes.data());
}

// A block of sixty-four 32-bit pixels, in four registers.
TAMRICK_BYTE_PERMUTES inline void LoadBlock(const std::uint8_t* in, __m512i (&pixels)[4]) {
    for (int i = 0; i < 4; ++i) {
        pixels[i] = _mm512_loadu_si512(in + 64 * i);
    }
}

TAMRICK_BYTE_PERMUTES int Bytes32(const Plan& plan, const std::uint8_t* stored, std::uint8_t* dst,
                                  int width) {
    const __m512i index[3] = {Load(plan.index[0]), Load(plan.index[1]), Load(plan.index[2])};
    int x = 0;
    for (; x + 64 <= width; x += 64) {
        __m512i pixels[4];
        LoadBlock(stored + 4 * static_cast<std::size_t>(x), pixels);
        std::uint8_t* out = dst + 3 * static_cast<std::size_t>(x);
        for (int r = 0; r < 3; ++r) {
            _mm512_storeu_si512(out + 64 * r, _mm512_permutex2var_epi8(pixels[r], index[r], pixels[r + 1]));
        }
    }
    return x;
}

// (v * a + 255 * (255 - a) + 127) / 255 in 16-bit lanes: with n + 1 =
// 65153 - (255 - v) * a at most 65153, n / 255 is (n + 1) * 257 >> 16.
TAMRICK_BYTE_PERMUTES inline __m512i OverWhite(__m512i value, __m512i alpha) {
    const __m512i inverse = _mm512_xor_si512(value, _mm512_set1_epi16(255));
    const __m512i n1 =
        _mm512_sub_epi16(_mm512_set1_epi16(static_cast<short>(65153)), _mm512_mullo_epi16(inverse, alpha));
    return _mm512_mulhi_epu16(n1, _mm512_set1_epi16(257));
}

TAMRICK_BYTE_PERMUTES int Bytes32OverWhite(const Plan& plan, const std::uint8_t* stored, std::uint8_t* dst,
                                           int width, std::uint8_t& opaque) {
    __m512i index[7];
    for (int i = 0; i < 7; ++i) {
        index[i] = Load(plan.index[static_cast<std::size_t>(i)]);
    }
    const __mmask64 lowBytes = 0x5555555555555555ull;
    __m512i seen = _mm512_set1_epi8(-1);
    int x = 0;
    for (; x + 64 <= width; x += 64) {
        __m512i pixels[4];
        LoadBlock(stored + 4 * static_cast<std::size_t>(x), pixels);
        std::uint8_t* out = dst + 3 * static_cast<std::size_t>(x);
        seen = _mm512_ternarylogic_epi32(seen, pixels[0], pixels[1], 0x80);
        seen = _mm512_ternarylogic_epi32(seen, pixels[2], pixels[3], 0x80);
        __m512i laid[6];
        for (int t = 0; t < 6; ++t) {
            const __m512i first = pixels[t < 3 ? 0 : 2];
            const __m512i second = pixels[t < 3 ? 1 : 3];
            const __m512i value = _mm512_maskz_permutex2var_epi8(lowBytes, first, index[t % 3], second);
            const __m512i alpha = _mm512_maskz_permutex2var_epi8(lowBytes, first, index[3 + t % 3], second);
            laid[t] = OverWhite(value, alpha);
        }
        for (int r = 0; r < 3; ++r) {
            _mm512_storeu_si512(out + 64 * r,
                                _mm512_permutex2var_epi8(laid[2 * r], index[6], laid[2 * r + 1]));
        }
    }
    alignas(64) std::uint8_t bytes[64];
    _mm512_store_si512(bytes, seen);
    for (int i = plan.alphaByte; i < 64; i += 4) {
        opaque &= bytes[i];
    }
    return x;
}

TAMRICK_BYTE_PERMUTES int Narrow16(const Plan& plan, const std::uint8_t* stored, std::uint8_t* dst,
                                   int width) {
    const __m512i pickX = Load(plan.index[0]);
    const __m512i pickY = Load(plan.index[1]);
    const __m512i maskX = Load(plan.index[2]);
    const __m512i greenX = Load(plan.index[3]);
    const __m512i first = Load(plan.index[4]);
    const __m512i second = Load(plan.index[5]);
    const __m512i blue = Load(plan.tables[0]);
    const __m512i green = Load(plan.tables[1]);
    const __m512i red = Load(plan.tables[2]);
    int x = 0;
    for (; x + 32 <= width; x += 32) {
        const __m512i pixels = _mm512_loadu_si512(stored + 2 * static_cast<std::size_t>(x));
        __m512i blueGreen = _mm512_maskz_multishift_epi64_epi8(kAll, pickX, pixels);
        blueGreen = _mm512_ternarylogic_epi32(blueGreen, maskX, greenX, 0xEA); // (a & b) | c
        blueGreen = _mm512_permutex2var_epi8(blue, blueGreen, green);
        const __m512i reds =
            _mm512_maskz_permutexvar_epi8(kAll, _mm512_maskz_multishift_epi64_epi8(kAll, pickY, pixels), red);
        std::uint8_t* out = dst + 3 * static_cast<std::size_t>(x);
        _mm512_storeu_si512(out, _mm512_permutex2var_epi8(blueGreen, first, reds));
        _mm512_mask_storeu_epi8(out + 64, kLow32, _mm512_permutex2var_epi8(blueGreen, second, reds));
    }
    return x;
}

struct LaneScale {
    __m512i mask, add, multiplier, after;
};

TAMRICK_BYTE_PERMUTES inline LaneScale LoadLaneScale(const Plan& plan, int first) {
    const auto lanes = [&plan, first](int i) {
        return plan.lanes[static_cast<std::size_t>(first + i)].data();
    };
    return {_mm512_load_si512(lanes(0)), _mm512_load_si512(lanes(1)), _mm512_load_si512(lanes(2)),
            _mm512_load_si512(lanes(3))};
}

TAMRICK_BYTE_PERMUTES inline __m512i Scale(__m512i fields, const LaneScale& s) {
    const __m512i shifted = _mm512_add_epi16(_mm512_and_si512(fields, s.mask), s.add);
    return _mm512_srlv_epi16(_mm512_mulhi_epu16(shifted, s.multiplier), s.after);
}

TAMRICK_BYTE_PERMUTES int Wide32(const Plan& plan, const std::uint8_t* stored, std::uint8_t* dst, int width) {
    const __m512i pickBlueGreen = Load(plan.index[0]);
    const __m512i pickRed = Load(plan.index[1]);
    const __m512i order = Load(plan.index[2]);
    const LaneScale blueGreen = LoadLaneScale(plan, 0);
    const LaneScale red = LoadLaneScale(plan, 4);
    const __mmask64 row48 = (__mmask64{1} << 48) - 1;
    int x = 0;
    for (; x + 16 <= width; x += 16) {
        const __m512i pixels = _mm512_loadu_si512(stored + 4 * static_cast<std::size_t>(x));
        const __m512i first =
            Scale(_mm512_maskz_multishift_epi64_epi8(kAll, pickBlueGreen, pixels), blueGreen);
        const __m512i second = Scale(_mm512_maskz_multishift_epi64_epi8(kAll, pickRed, pixels), red);
        _mm512_mask_storeu_epi8(dst + 3 * static_cast<std::size_t>(x), row48,
                                _mm512_permutex2var_epi8(first, order, second));
    }
    return x;
}
#endif

} // namespace

WideScale WideScaleFor(int bits) {
    return bits >= 0 && bits <= kWidestChannel ? kWideScales[bits] : WideScale{};
}

bool Available() {
#if TAMRICK_HAS_BYTE_PERMUTES
    return HasBytePermutes();
#else
    return false;
#endif
}

Plan PlanFor(int bitCount, const std::array<std::uint32_t, 4>& masks) {
    Plan plan;
    const Field bgr[3] = {FieldOf(masks[2]), FieldOf(masks[1]), FieldOf(masks[0])};
    const Field alpha = FieldOf(masks[3]);
    if (bitCount == 32) {
        if (IsWholeByte(bgr[0]) && IsWholeByte(bgr[1]) && IsWholeByte(bgr[2]) &&
            (alpha.bits == 0 || IsWholeByte(alpha))) {
            PlanBytes32(bgr, alpha, plan);
        } else if (alpha.bits == 0 && kWideScales[bgr[0].bits].exists && kWideScales[bgr[1].bits].exists &&
                   kWideScales[bgr[2].bits].exists) {
            PlanWide32(bgr, plan);
        }
    } else if (bitCount == 16 && alpha.bits == 0) {
        bool narrow = true;
        for (const Field& field : bgr) {
            narrow = narrow && field.bits <= 6 && field.shift + field.bits <= 16;
        }
        if (narrow) {
            PlanNarrow16(bgr, plan);
        }
    }
    return plan;
}

int Expand(const Plan& plan, const std::uint8_t* stored, std::uint8_t* dst, int width, std::uint8_t& opaque) {
#if TAMRICK_HAS_BYTE_PERMUTES
    switch (plan.kind) {
    case Kind::kBytes32:
        return Bytes32(plan, stored, dst, width);
    case Kind::kBytes32OverWhite:
        return Bytes32OverWhite(plan, stored, dst, width, opaque);
    case Kind::kNarrow16:
        return Narrow16(plan, stored, dst, width);
    case Kind::kWide32:
        return Wide32(plan, stored, dst, width);
    case Kind::kNone:
        break;
    }
#else
    (void)plan, (void)stored, (void)dst, (void)width, (void)opaque;
#endif
    return 0;
}

} // namespace bmp_fused_kernels
