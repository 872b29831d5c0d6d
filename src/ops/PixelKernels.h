#pragma once

#include <cstddef>
#include <cstdint>

// The per-row inner loops of the point operations. They take plain values
// and non-overlapping row pointers so that the compiler can vectorise them.
namespace ops {

void InvertBytes(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, std::size_t count);
void GrayRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, int width);
// Each pixel becomes the level colour (blue, green, red) scaled by its
// luminance L: toward white above 128, toward black below 127.
void LevelRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, int width, int blue, int green,
              int red);
void TableRow(const std::uint8_t* __restrict in, std::uint8_t* __restrict out, int width,
              const std::uint8_t* __restrict blue, const std::uint8_t* __restrict green,
              const std::uint8_t* __restrict red);

} // namespace ops
