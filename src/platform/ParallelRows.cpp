#include "platform/ParallelRows.h"

#include <algorithm>
#include <system_error>
#include <thread>
#include <vector>

namespace platform {

int RowBandCount() {
    static const int count = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, 8);
    return count;
}

void ForEachRowBand(int rows, const std::function<void(int begin, int end)>& work, int minRowsPerBand) {
    if (rows <= 0) {
        return;
    }
    const int bands = std::clamp(rows / std::max(minRowsPerBand, 1), 1, RowBandCount());
    if (bands == 1) {
        work(0, rows);
        return;
    }
    std::vector<std::thread> helpers;
    helpers.reserve(static_cast<std::size_t>(bands - 1));
    int firstEnd = rows;
    for (int band = bands - 1; band >= 1; --band) {
        const int begin = static_cast<int>(static_cast<long long>(rows) * band / bands);
        const int end = firstEnd;
        try {
            helpers.emplace_back([&work, begin, end] { work(begin, end); });
        } catch (const std::system_error&) {
            break; // no thread to be had: the caller does the rest itself
        }
        firstEnd = begin;
    }
    work(0, firstEnd);
    for (std::thread& helper : helpers) {
        helper.join();
    }
}

} // namespace platform
