#pragma once

#include <cstddef>
#include <cstdint>

namespace platform {

// A block of memory with a single owner. Every pixel store and work buffer of
// the program is one of these, so that running out of memory is an empty
// block the caller can report, never an exception.
//
// The most recently freed large block (a picture-sized undo copy, say) is kept
// and handed out again for the next large request it fits: fresh memory from
// the system costs a page fault per 4 KB on first touch, which would make a
// snapshot of a big picture many times slower than copying its bytes.
class HeapBlock {
public:
    HeapBlock() = default;
    ~HeapBlock();
    HeapBlock(HeapBlock&& other) noexcept;
    HeapBlock& operator=(HeapBlock&& other) noexcept;
    HeapBlock(const HeapBlock&) = delete;
    HeapBlock& operator=(const HeapBlock&) = delete;

    // A zero-filled block; empty when the memory cannot be had (or when the
    // test hook asks the allocation to fail).
    static HeapBlock Allocate(std::size_t bytes);
    // For callers that overwrite every byte at once: the contents are undefined.
    static HeapBlock AllocateForOverwrite(std::size_t bytes);

    std::uint8_t* data() const { return m_data; }
    std::size_t size() const { return m_size; }
    explicit operator bool() const { return m_data != nullptr; }
    void reset();

    // Test hook: after `skip` more successful allocations, the next `count`
    // fail. A count of zero switches it off.
    static void FailNextAllocations(int count, int skip = 0);
    static int PendingFailures();

private:
    static HeapBlock Obtain(std::size_t bytes, bool zeroed);

    std::uint8_t* m_data = nullptr;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

} // namespace platform
