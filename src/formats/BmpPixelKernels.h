#pragma once

#include <cstddef>
#include <cstdint>

// The per-row inner loops of the BMP reader. Rows are decoded in planes (one
// byte per pixel and channel) with unit-stride loops the compiler vectorises,
// and only the last step interleaves them into blue, green, red.
namespace bmp_kernels {

// How one channel of a bit-field pixel becomes a byte: v = (pixel >> shift)
// & mask. A plane taken "scaled" turns v into n = v * 255 + mask / 2 and then
// into (n + (n >> bits) + 1) >> bits, which is (v * 255 + mask / 2) / mask for
// channels of `bits` = 8 to 16 bits; a "raw" plane holds v itself (mask at
// most 255), scaled afterwards through a table when narrower than 8 bits.
struct FieldRule {
    int shift = 0;
    std::uint32_t mask = 0;
    int bits = 8;
};

// One channel of a row of 16- or 32-bit little-endian pixels.
void RawPlane16(const std::uint8_t* __restrict stored, std::uint8_t* __restrict plane, int width, FieldRule rule);
void RawPlane32(const std::uint8_t* __restrict stored, std::uint8_t* __restrict plane, int width, FieldRule rule);
void ScaledPlane16(const std::uint8_t* __restrict stored, std::uint8_t* __restrict plane, int width,
                   FieldRule rule);
void ScaledPlane32(const std::uint8_t* __restrict stored, std::uint8_t* __restrict plane, int width,
                   FieldRule rule);
// out[i] = table[in[i]] (in and out may be the same row).
void LookUpBytes(const std::uint8_t* in, std::uint8_t* out, std::size_t count, const std::uint8_t* table);
// Each byte v of `plane` laid over white with the opacity a of the same
// place in `alpha`: (v * a + 255 * (255 - a) + 127) / 255.
void OverWhite(std::uint8_t* __restrict plane, const std::uint8_t* __restrict alpha, std::size_t count);
// Colour-table indices straight into 3 bytes per pixel: out[3 i + c] is
// column c (blue, green, red; 256 entries each) at in[i].
void LookUpInterleaved(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, int width,
                       const std::uint8_t* blue, const std::uint8_t* green, const std::uint8_t* red);
// Three planes into 3 bytes per pixel (blue, green, red).
void Interleave(const std::uint8_t* __restrict blue, const std::uint8_t* __restrict green,
                const std::uint8_t* __restrict red, std::uint8_t* __restrict out, int width);

} // namespace bmp_kernels
