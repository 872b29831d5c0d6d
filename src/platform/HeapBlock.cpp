#include "platform/HeapBlock.h"

#include <atomic>
#include <cstdlib>

namespace platform {

namespace {
std::atomic<int> g_failuresPending{0};
std::atomic<int> g_successesBeforeFailure{0};

bool ConsumeInjectedFailure() {
    if (g_failuresPending.load() == 0) {
        return false;
    }
    int skip = g_successesBeforeFailure.load();
    while (skip > 0) {
        if (g_successesBeforeFailure.compare_exchange_weak(skip, skip - 1)) {
            return false;
        }
    }
    int pending = g_failuresPending.load();
    while (pending > 0) {
        if (g_failuresPending.compare_exchange_weak(pending, pending - 1)) {
            return true;
        }
    }
    return false;
}
} // namespace

void HeapBlock::FreeDeleter::operator()(std::uint8_t* p) const { std::free(p); }

HeapBlock HeapBlock::Allocate(std::size_t bytes) {
    HeapBlock block;
    if (ConsumeInjectedFailure()) {
        return block;
    }
    // calloc of a large block maps fresh zero pages, so the zero fill is free.
    auto* p = static_cast<std::uint8_t*>(std::calloc(bytes == 0 ? 1 : bytes, 1));
    if (p != nullptr) {
        block.m_data.reset(p);
        block.m_size = bytes;
    }
    return block;
}

void HeapBlock::FailNextAllocations(int count, int skip) {
    g_successesBeforeFailure.store(skip < 0 ? 0 : skip);
    g_failuresPending.store(count < 0 ? 0 : count);
}

int HeapBlock::PendingFailures() { return g_failuresPending.load(); }

} // namespace platform
