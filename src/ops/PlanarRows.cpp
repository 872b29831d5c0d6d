#include "ops/PlanarRows.h"

#include "ops/FilterMath.h"

namespace ops {

TAMRICK_VECTOR_CLONES void SplitIntoPlanes(const std::uint8_t* __restrict row, std::int16_t* __restrict planes,
                                           int width) {
    const std::size_t stride = static_cast<std::size_t>(width) + 2;
    std::int16_t* blue = planes + 1;
    std::int16_t* green = blue + stride;
    std::int16_t* red = green + stride;
    for (int x = 0; x < width; ++x) {
        blue[x] = row[3 * x];
        green[x] = row[3 * x + 1];
        red[x] = row[3 * x + 2];
    }
    for (std::int16_t* plane : {blue, green, red}) {
        plane[-1] = plane[0];
        plane[width] = plane[width - 1];
    }
}

} // namespace ops
