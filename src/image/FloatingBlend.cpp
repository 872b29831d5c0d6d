#include "image/FloatingBlend.h"

#include <algorithm>
#include <cstring>

void BlendFloatingRow(std::uint8_t* pictureRun, int firstColumn, int lastColumn,
                      const std::uint8_t* floatingRow, const std::uint8_t* maskRow, int floatingX,
                      int floatingWidth) {
    const int begin = std::max(firstColumn, floatingX);
    const int end = std::min(lastColumn, floatingX + floatingWidth - 1);
    int x = begin;
    while (x <= end) {
        const int fx = x - floatingX;
        const std::uint8_t maskByte = maskRow[fx >> 3];
        if ((fx & 7) == 0 && x + 7 <= end && (maskByte == 0x00 || maskByte == 0xFF)) {
            // Whole mask bytes: skip eight clear pixels or copy eight set ones at once.
            if (maskByte == 0xFF) {
                std::memcpy(pictureRun + 3 * (x - firstColumn), floatingRow + 3 * fx, 24);
            }
            x += 8;
            continue;
        }
        if (maskByte & (0x80 >> (fx & 7))) {
            std::memcpy(pictureRun + 3 * (x - firstColumn), floatingRow + 3 * fx, 3);
        }
        ++x;
    }
}
