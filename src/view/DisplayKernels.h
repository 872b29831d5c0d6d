#pragma once

#include <cstddef>
#include <cstdint>

// Row loops of the display renderer, written so that the compiler vectorises
// them (each built for the wider vector units too, chosen at load time).
namespace display {

// sums[i] += row[i].
void AddRow(const std::uint8_t* row, std::uint16_t* sums, std::size_t count);

// sums[i] = sums[i] / divisor for sums up to kMaxReducedSum and divisors 1..8.
constexpr int kMaxReducedSum = 8 * 255;
void DivideSums(std::uint16_t* sums, std::size_t count, int divisor);

// One screen pixel per `block` pixels of a row of averaged rows (16-bit
// blue, green, red): the mean of the block (the last may be shorter),
// through the gamma tables.
void ReduceColumns(const std::uint16_t* sums, int pixels, int block, const std::uint8_t* blue,
                   const std::uint8_t* green, const std::uint8_t* red, std::uint8_t* out);

// Ordered dithering of a row of bytes: each byte keeps its bits under
// `highMask` when its threshold is above the bits below, else goes one step
// (the lowest bit of the mask) up, 255 at the top.
void QuantiseBytes(std::uint8_t* row, const std::uint8_t* thresholds, std::size_t count, std::uint8_t highMask);

// Blue, green, red bytes into 32-bit 0xFFRRGGBB pixels.
void ToRgb32(const std::uint8_t* bgr, std::uint32_t* out, std::size_t pixels);

// out[i] = in[i] ^ mask[i].
void XorPixels(const std::uint32_t* in, const std::uint32_t* mask, std::uint32_t* out, std::size_t count);

} // namespace display
