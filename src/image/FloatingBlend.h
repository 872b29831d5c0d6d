#pragma once

#include <cstdint>

// Lays the selected pixels of one row of a floating selection over a run of a
// 24-bit picture row. `pictureRun` holds picture columns firstColumn..lastColumn
// (3 bytes each). `floatingRow` and `maskRow` are one row of the floating image
// and of its 1-bit mask; their column 0 lies at picture column `floatingX`.
// Only columns inside both runs whose mask bit is set are replaced. Stamping a
// selection into the picture and drawing it on screen both use this, so what
// the user sees is exactly what a stamp produces.
void BlendFloatingRow(std::uint8_t* pictureRun, int firstColumn, int lastColumn,
                      const std::uint8_t* floatingRow, const std::uint8_t* maskRow, int floatingX,
                      int floatingWidth);
