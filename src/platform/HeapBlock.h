#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace platform {

// A zero-filled block of memory with a single owner. Every pixel store and work
// buffer of the program is one of these, so that running out of memory is a
// null result the caller can report, never an exception.
class HeapBlock {
public:
    HeapBlock() = default;

    // Returns an empty block when the memory cannot be had (or when the test
    // hook asks the allocation to fail).
    static HeapBlock Allocate(std::size_t bytes);

    std::uint8_t* data() const { return m_data.get(); }
    std::size_t size() const { return m_size; }
    explicit operator bool() const { return m_data != nullptr; }
    void reset() {
        m_data.reset();
        m_size = 0;
    }

    // Test hook: after `skip` more successful allocations, the next `count`
    // fail. A count of zero switches it off.
    static void FailNextAllocations(int count, int skip = 0);
    static int PendingFailures();

private:
    struct FreeDeleter {
        void operator()(std::uint8_t* p) const;
    };
    std::unique_ptr<std::uint8_t[], FreeDeleter> m_data;
    std::size_t m_size = 0;
};

} // namespace platform
