#pragma once

#include <cstddef>
#include <cstdint>

// The per-row inner loops of the point operations. They take plain values
// and non-overlapping row pointers so that the compiler can vectorise them.
namespace ops {

void InvertBytes(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, std::size_t count);
void GrayRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, int width);
// The luminance of every pixel of a row, one byte each.
void LuminanceRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict levels, int width);
// Each pixel becomes the first three bytes (blue, green, red) of
// colors[its luminance].
void LevelRow(const std::uint8_t* __restrict luminance, std::uint8_t* __restrict out, int width,
              const std::uint32_t* __restrict colors);
void TableRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, int width,
              const std::uint8_t* __restrict blue, const std::uint8_t* __restrict green,
              const std::uint8_t* __restrict red);

} // namespace ops
