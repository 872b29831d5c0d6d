#include "platform/HeapBlock.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <utility>

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

// Blocks from this size up are worth keeping for reuse.
constexpr std::size_t kReuseThreshold = 1u << 20;

// One kept block. A request reuses it when it fits and does not waste more
// than half of it.
struct SpareBlock {
    std::mutex lock;
    std::uint8_t* data = nullptr;
    std::size_t capacity = 0;

    std::uint8_t* Take(std::size_t bytes, std::size_t& capacityOut) {
        std::lock_guard guard(lock);
        if (data == nullptr || bytes > capacity || bytes < capacity / 2) {
            return nullptr;
        }
        capacityOut = capacity;
        return std::exchange(data, nullptr);
    }

    // Keeps `block` and returns whatever must be freed instead.
    std::uint8_t* Keep(std::uint8_t* block, std::size_t blockCapacity) {
        std::lock_guard guard(lock);
        std::uint8_t* previous = data;
        data = block;
        capacity = blockCapacity;
        return previous;
    }
};

SpareBlock& Spare() {
    static SpareBlock* spare = new SpareBlock; // lives until exit, like the heap itself
    return *spare;
}

} // namespace

HeapBlock::~HeapBlock() {
    reset();
}

HeapBlock::HeapBlock(HeapBlock&& other) noexcept
    : m_data(std::exchange(other.m_data, nullptr)), m_size(std::exchange(other.m_size, 0)),
      m_capacity(std::exchange(other.m_capacity, 0)) {}

HeapBlock& HeapBlock::operator=(HeapBlock&& other) noexcept {
    if (this != &other) {
        reset();
        m_data = std::exchange(other.m_data, nullptr);
        m_size = std::exchange(other.m_size, 0);
        m_capacity = std::exchange(other.m_capacity, 0);
    }
    return *this;
}

void HeapBlock::reset() {
    if (m_data == nullptr) {
        return;
    }
    std::uint8_t* toFree = m_data;
    if (m_capacity >= kReuseThreshold) {
        toFree = Spare().Keep(m_data, m_capacity);
    }
    std::free(toFree);
    m_data = nullptr;
    m_size = 0;
    m_capacity = 0;
}

HeapBlock HeapBlock::Obtain(std::size_t bytes, bool zeroed) {
    HeapBlock block;
    if (ConsumeInjectedFailure()) {
        return block;
    }
    const std::size_t wanted = bytes == 0 ? 1 : bytes;
    std::size_t capacity = wanted;
    std::uint8_t* data = wanted >= kReuseThreshold ? Spare().Take(wanted, capacity) : nullptr;
    if (data != nullptr) {
        if (zeroed) {
            std::memset(data, 0, wanted);
        }
    } else {
        // calloc of a large block maps fresh zero pages, so its zero fill is free.
        data = static_cast<std::uint8_t*>(zeroed ? std::calloc(wanted, 1) : std::malloc(wanted));
        capacity = wanted;
    }
    if (data != nullptr) {
        block.m_data = data;
        block.m_size = bytes;
        block.m_capacity = capacity;
    }
    return block;
}

HeapBlock HeapBlock::Allocate(std::size_t bytes) {
    return Obtain(bytes, true);
}

HeapBlock HeapBlock::AllocateForOverwrite(std::size_t bytes) {
    return Obtain(bytes, false);
}

void HeapBlock::FailNextAllocations(int count, int skip) {
    g_successesBeforeFailure.store(skip < 0 ? 0 : skip);
    g_failuresPending.store(count < 0 ? 0 : count);
}

int HeapBlock::PendingFailures() {
    return g_failuresPending.load();
}

} // namespace platform
