#pragma once

#include "platform/HeapBlock.h"
#include "platform/ParallelRows.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

// Row loops shared by the filter, adjustment and geometry engines. Each stored
// row of the result depends only on source rows, so the rows are split into
// bands that run on the machine's cores; the results do not depend on the
// split.
namespace ops {

// Runs `work(begin, end)` on bands of stored rows (end exclusive).
template <class Work> int ForEachStoredBand(int height, const Work& work) {
    platform::ForEachRowBand(height, [&](int begin, int end) { work(begin, end); });
    return 1;
}

// Runs `rule(y, work)` for every stored row y, with a zero-filled work block
// of `workBytes` per band (none when 0). Returns 0 when a block cannot be had.
template <class Rule> int ForEachStoredRow(int height, std::size_t workBytes, const Rule& rule) {
    std::atomic<bool> failed{false};
    platform::ForEachRowBand(height, [&](int begin, int end) {
        platform::HeapBlock work;
        if (workBytes > 0) {
            work = platform::HeapBlock::Allocate(workBytes);
            if (!work) {
                failed = true;
                return;
            }
        }
        for (int y = begin; y < end; ++y) {
            rule(y, work.data());
        }
    });
    return failed ? 0 : 1;
}

// The three-row neighbourhood pass: `rule(prev, cur, next, out, work)` for every
// stored row, where the first row is its own previous row and the last row its
// own next row.
template <class Rule>
int ThreeRowPass(const std::uint8_t* src, std::uint8_t* dst, int height, std::uint32_t rowBytes,
                 std::size_t workBytes, const Rule& rule) {
    return ForEachStoredRow(height, workBytes, [&](int y, std::uint8_t* work) {
        const std::uint8_t* cur = src + static_cast<std::size_t>(y) * rowBytes;
        const std::uint8_t* prev = y > 0 ? cur - rowBytes : cur;
        const std::uint8_t* next = y + 1 < height ? cur + rowBytes : cur;
        rule(prev, cur, next, dst + static_cast<std::size_t>(y) * rowBytes, work);
    });
}

// Column sums prev + cur + next of a 24-bit row, one per byte, with one
// replicated pixel on each side: sums[-3..-1] repeat the first pixel and
// sums[n..n+2] the last. `sums` must have room for 3 entries before it.
void SumThreeRows(const std::uint8_t* prev, const std::uint8_t* cur, const std::uint8_t* next,
                  std::int16_t* sums, int pixelBytes);
// Horizontal three-pixel sums of one 24-bit row with the same edge rule.
void SumThreePixels(const std::uint8_t* __restrict row, std::int16_t* __restrict sums, int pixelBytes);

// Maps every pixel's blue, green and red byte through its channel's table.
// Padding bytes of the target rows are left as they are.
void ApplyChannelTables(const std::uint8_t* src, std::uint8_t* dst, int width, int height,
                        std::uint32_t rowBytes, const std::uint8_t* blue, const std::uint8_t* green,
                        const std::uint8_t* red);

} // namespace ops
