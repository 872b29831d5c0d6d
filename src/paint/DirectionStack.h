#pragma once

#include "platform/HeapBlock.h"

#include <cstdint>
#include <vector>

// A stack of 2-bit directions (0..3) for the depth-first fills: one entry per
// step of the current path instead of one point per pixel.
//
// Entries live in chunks of 60,020 bytes: a 20-byte header (next chunk,
// previous chunk, entries in the chunk, position in the current byte, index of
// the current byte) and 60,000 data bytes holding 240,000 entries, four per
// byte: the first in bits 6..7, then 4..5, 2..3 and 0..1. A chunk is allocated
// when the current one is full and freed when a pop finds it empty. The links
// are chunk numbers in the stack's chunk list.
class DirectionStack {
public:
    static constexpr int kHeaderBytes = 20;
    static constexpr int kDataBytes = 60000;
    static constexpr int kChunkBytes = kHeaderBytes + kDataBytes;
    static constexpr std::int32_t kEntriesPerChunk = kDataBytes * 4;

    // Allocates the first chunk; when that fails the stack stays unusable:
    // every push fails and every pop reports the stack empty.
    DirectionStack();
    DirectionStack(const DirectionStack&) = delete;
    DirectionStack& operator=(const DirectionStack&) = delete;

    bool IsUsable() const { return m_data != nullptr; }

    // 1, or 0 when a new chunk was needed and could not be allocated (the
    // entry is then lost).
    int Push(int direction) {
        if (m_count == kEntriesPerChunk && !NextChunk()) {
            return 0;
        }
        if (m_data == nullptr) {
            return 0;
        }
        std::uint8_t& byte = m_data[m_count >> 2];
        const int slot = m_count & 3;
        byte = static_cast<std::uint8_t>((byte & kClearMask[slot]) | (direction << kShift[slot]));
        ++m_count;
        ++m_total;
        return 1;
    }

    // The last direction pushed, or -1 when the stack is empty.
    int Pop() {
        if (m_count == 0 && !PreviousChunk()) {
            return -1;
        }
        --m_count;
        --m_total;
        return (m_data[m_count >> 2] >> kShift[m_count & 3]) & 3;
    }

    std::int64_t Size() const { return m_total; }

    // The stack's hot state held in the caller's registers during a walk:
    // pushes and pops work on local copies, and only a chunk change goes
    // through the stack object. Hand the cursor back with Release before
    // using the stack directly again.
    class Cursor {
    public:
        explicit Cursor(DirectionStack& stack)
            : m_stack(stack), m_data(stack.m_data), m_count(stack.m_count) {}

        int Push(int direction) {
            if (m_count == kEntriesPerChunk || m_data == nullptr) {
                const Slow after = PushSlow(m_stack, m_data, m_count, direction);
                m_data = after.data;
                m_count = after.count;
                return after.result;
            }
            std::uint8_t& byte = m_data[m_count >> 2];
            const int shift = 6 - 2 * (m_count & 3);
            byte = static_cast<std::uint8_t>((byte & ~(3 << shift)) | (direction << shift));
            ++m_count;
            return 1;
        }
        int Pop() {
            if (m_count == 0) {
                const Slow after = PopSlow(m_stack, m_data, m_count);
                m_data = after.data;
                m_count = after.count;
                return after.result;
            }
            --m_count;
            return (m_data[m_count >> 2] >> (6 - 2 * (m_count & 3))) & 3;
        }
        void Release() { m_stack.Adopt(m_data, m_count); }

    private:
        // Chunk changes take and return the cursor's state by value, so that
        // the cursor itself never leaves the caller's registers.
        struct Slow {
            std::uint8_t* data;
            std::int32_t count;
            int result;
        };
        static Slow PushSlow(DirectionStack& stack, std::uint8_t* data, std::int32_t count, int direction) {
            stack.Adopt(data, count);
            const int pushed = stack.Push(direction);
            return Slow{stack.m_data, stack.m_count, pushed};
        }
        static Slow PopSlow(DirectionStack& stack, std::uint8_t* data, std::int32_t count) {
            stack.Adopt(data, count);
            const int popped = stack.Pop();
            return Slow{stack.m_data, stack.m_count, popped};
        }

        DirectionStack& m_stack;
        std::uint8_t* m_data;
        std::int32_t m_count;
    };
    int ChunkCount() const { return static_cast<int>(m_chunks.size()); }
    // Data byte `index` of the current chunk, for checking the bit layout.
    std::uint8_t CurrentChunkByte(int index) const { return m_data ? m_data[index] : 0; }

private:
    static constexpr int kShift[4] = {6, 4, 2, 0};
    static constexpr std::uint8_t kClearMask[4] = {0x3F, 0xCF, 0xF3, 0xFC};

    struct ChunkHeader {
        std::int32_t next;
        std::int32_t previous;
        std::int32_t count;
        std::int32_t position;
        std::int32_t byteIndex;
    };
    static_assert(sizeof(ChunkHeader) == kHeaderBytes, "the chunk header is 20 bytes");

    // Takes back the count of the current chunk from a cursor.
    void Adopt(std::uint8_t* data, std::int32_t count) {
        if (data == m_data) {
            m_total += count - m_count;
            m_count = count;
        }
    }
    bool NextChunk();
    bool PreviousChunk();
    ChunkHeader& Header(int chunk) const;
    void SaveCurrent();
    void LoadCurrent();

    std::vector<platform::HeapBlock> m_chunks;
    int m_current = -1;
    std::uint8_t* m_data = nullptr;
    std::int32_t m_count = 0; // entries in the current chunk
    std::int64_t m_total = 0;
};
