#pragma once

#include <cstddef>
#include <cstdint>

namespace ops {

// Target rows of a quarter turn are source columns: a strip of up to
// kTurnStrip target rows is filled from `width` source rows at once.
constexpr int kTurnStrip = 16;

// Fills target rows rows[0..count-1] (count <= kTurnStrip) of a 24-bit quarter
// turn. Target row j is the source column `columnStep` (1 or -1) pixels per j
// from the pixel at `first`; its pixel i comes from the source row
// `storedStep` bytes per i away. `lastStoredIndex` is the i that reads the
// source's last stored row. Nothing is read or written beyond the pixels of
// either picture.
void TurnStrip(const std::uint8_t* first, std::ptrdiff_t storedStep, int columnStep, std::uint8_t* const* rows,
               int count, int width, int lastStoredIndex);

} // namespace ops
