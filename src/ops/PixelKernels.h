#pragma once

#include <cstddef>
#include <cstdint>

// The per-row inner loops of the point operations. They take plain values
// and non-overlapping row pointers so that the compiler can vectorise them.
namespace ops {

void InvertBytes(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, std::size_t count);
void GrayRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, int width);
// Each pixel becomes the three bytes levels[3 x luminance .. +2].
void LevelRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, int width,
              const std::uint8_t* __restrict levels);
void TableRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, int width,
              const std::uint8_t* __restrict blue, const std::uint8_t* __restrict green,
              const std::uint8_t* __restrict red);

} // namespace ops
