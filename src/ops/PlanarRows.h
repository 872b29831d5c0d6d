#pragma once

#include "ops/RowPasses.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

// Neighbourhood filters that work per pixel read their rows as planes: one
// array of 16-bit values per channel, with the end pixels repeated one place
// beyond each end, so that the left and right neighbours of pixel x are always
// at x - 1 and x + 1. Each band splits every row it needs once and keeps the
// previous, current and next row in rotation.
namespace ops {

struct RowPlanes {
    const std::int16_t* blue;
    const std::int16_t* green;
    const std::int16_t* red;
};

// Runs `rule(prev, cur, next, target)` for every stored row in bands over the
// cores, with the planes of the three rows (the first row is its own previous
// row, the last its own next) and the row's target bytes; the rule writes the
// row's pixels, and its padding bytes are copied from the source. 0 when the
// planes cannot be had.
template <class Rule>
int ForEachRowAsPlanes(const std::uint8_t* src, std::uint8_t* dst, int width, int height, std::uint32_t rowBytes,
                       const Rule& rule);

// The planes of one row into `planes` (3 x (width + 2) values).
void SplitIntoPlanes(const std::uint8_t* __restrict row, std::int16_t* __restrict planes, int width);

template <class Rule>
int ForEachRowAsPlanes(const std::uint8_t* src, std::uint8_t* dst, int width, int height, std::uint32_t rowBytes,
                       const Rule& rule) {
    const std::size_t stride = static_cast<std::size_t>(width) + 2;
    const std::size_t planeBytes = 3 * stride * sizeof(std::int16_t);
    const std::size_t pixelBytes = 3 * static_cast<std::size_t>(width);
    return ForEachBandWithWork(height, 3 * planeBytes, [&](int begin, int end, std::uint8_t* block) {
        const auto row = [&](int y) { return src + static_cast<std::size_t>(y) * rowBytes; };
        std::int16_t* slots[3];
        for (int k = 0; k < 3; ++k) {
            slots[k] = reinterpret_cast<std::int16_t*>(block + k * planeBytes);
        }
        const auto planes = [&](const std::int16_t* slot) {
            return RowPlanes{slot + 1, slot + stride + 1, slot + 2 * stride + 1};
        };
        SplitIntoPlanes(row(std::max(begin - 1, 0)), slots[0], width);
        SplitIntoPlanes(row(begin), slots[1], width);
        for (int y = begin; y < end; ++y) {
            SplitIntoPlanes(row(std::min(y + 1, height - 1)), slots[2], width);
            std::uint8_t* target = dst + static_cast<std::size_t>(y) * rowBytes;
            rule(planes(slots[0]), planes(slots[1]), planes(slots[2]), target);
            std::memcpy(target + pixelBytes, row(y) + pixelBytes, rowBytes - pixelBytes);
            std::swap(slots[0], slots[1]);
            std::swap(slots[1], slots[2]);
        }
    });
}

} // namespace ops
