#pragma once

#include <functional>

namespace platform {

// Splits rows 0..rows-1 into contiguous bands and runs `work(begin, end)` on
// each (end exclusive), the first band on the calling thread and the others on
// helper threads, and returns when all are done. Work that depends on nothing
// but its own rows gives the same result however the rows are split. Small
// jobs (fewer than `minRowsPerBand` rows per band) run on the caller alone, as
// do all jobs when a thread cannot be started.
void ForEachRowBand(int rows, const std::function<void(int begin, int end)>& work, int minRowsPerBand = 16);

// How many bands ForEachRowBand uses at most (the machine's cores, 1..8).
int RowBandCount();

} // namespace platform
