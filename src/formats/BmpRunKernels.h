#pragma once

#include <cstdint>

// RLE8 encoded runs expanded with vector instructions, for pictures whose
// runs are mostly short (noisy photographs).
namespace bmp_run_kernels {

// Expands the (count, index) pairs from `code` on, mostly eight at a time,
// into `row` from x on, while they lie before `last` and the row has 128
// pixels to spare. Stops at an escape (count 0), a run longer than 64 pixels
// or the buffer's or the row's end and returns where it stopped; x moves on.
// Up to 64 bytes beyond the final x may be set to 0. Does nothing on machines
// without the instructions.
const std::uint8_t* ExpandShortRuns(const std::uint8_t* code, const std::uint8_t* last, std::uint8_t* row,
                                    int& x, int width);

} // namespace bmp_run_kernels
