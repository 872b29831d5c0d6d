#pragma once

#include <array>
#include <cstdint>

// Whole-row decoders for the common bit-field layouts that read each stored
// pixel once and write blue, green, red straight away, with 64-byte vector
// byte permutes (only on machines that have them: Available()). Each works in
// blocks of pixels and returns how many leading pixels it decoded; the caller
// decodes the rest of the row its own way.
//
// - 32-bit pixels whose channels are whole bytes: a byte permute, with alpha
//   laid over white as (v * a + 255 * (255 - a) + 127) / 255.
// - 16-bit pixels with channels of at most 6 bits: each channel is picked out
//   with a multi-shift and scaled through a 64-entry table.
// - Other 32-bit layouts without alpha: each channel is picked out into a
//   16-bit lane and scaled by a high product (see WideScale).
namespace bmp_fused_kernels {

enum class Kind { kNone, kBytes32, kBytes32OverWhite, kNarrow16, kWide32 };

// What a layout needs, worked out once per file.
struct Plan {
    Kind kind = Kind::kNone;
    alignas(64) std::array<std::array<std::uint8_t, 64>, 7> index{};  // permute and shift controls
    alignas(64) std::array<std::array<std::uint8_t, 64>, 3> tables{}; // channel scales (narrow)
    alignas(64) std::array<std::array<std::uint16_t, 32>, 8> lanes{}; // per-lane masks and scales (wide)
    int alphaByte = 0;
};

// A channel value v of `bits` bits (1..12) becomes (v * 255 + m / 2) / m,
// m = 2^bits - 1, as ((v << shift) + add) * multiplier >> 16 >> after, all
// within 16 bits. Not every width has such constants (`exists`).
struct WideScale {
    bool exists = false;
    int shift = 0;
    std::uint16_t add = 0;
    std::uint16_t multiplier = 0;
    int after = 0;
};
WideScale WideScaleFor(int bits);

// True when this machine has the vector instructions the decoders use.
bool Available();
// The plan for 16- or 32-bit pixels with `masks` (red, green, blue, alpha);
// kind kNone when no decoder here takes the layout.
Plan PlanFor(int bitCount, const std::array<std::uint32_t, 4>& masks);
// Decodes the leading blocks of a row; `opaque` is ANDed with every alpha.
int Expand(const Plan& plan, const std::uint8_t* stored, std::uint8_t* dst, int width, std::uint8_t& opaque);

} // namespace bmp_fused_kernels
