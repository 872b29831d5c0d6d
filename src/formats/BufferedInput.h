#pragma once

#include "formats/InputFile.h"
#include "platform/HeapBlock.h"

#include <cstddef>
#include <cstdint>
#include <string>

// A regular file read front to back through a 64 KB buffer, so that readers
// that take a few bytes at a time (a BMP row of one pixel, an RLE code) cost
// one system call per buffer, not one per request.
class BufferedInput {
public:
    static constexpr std::size_t kBufferBytes = 1 << 16;

    bool Open(const std::string& path);
    void Close();
    // Reads exactly `bytes`; false on a short read or an error.
    bool Read(void* dst, std::size_t bytes);
    // One byte, or -1 at the end of the file.
    int Byte() {
        if (m_next == m_end && !Refill()) {
            return -1;
        }
        return m_buffer.data()[m_next++];
    }
    // The bytes buffered but not read yet (refilling the buffer first when it
    // is used up; `count` 0 at the end of the file), for decoders that walk
    // them in place; Advance(n) then consumes n of them.
    const std::uint8_t* Buffered(std::size_t& count) {
        if (m_next == m_end) {
            Refill();
        }
        count = m_end - m_next;
        return m_buffer.data() + m_next;
    }
    void Advance(std::size_t count) { m_next += count; }
    // Moves forward to `offset` from the start of the file; false when that
    // is behind the current position or beyond the end.
    bool SkipTo(std::uint64_t offset);
    // Bytes read so far.
    std::uint64_t Position() const { return m_bufferStart + m_next; }
    std::uint64_t Size() const { return m_file.Size(); }
    // False when Open could not get the buffer.
    bool HasBuffer() const { return static_cast<bool>(m_buffer); }

private:
    bool Refill();

    InputFile m_file;
    platform::HeapBlock m_buffer;
    std::uint64_t m_bufferStart = 0; // file offset of the buffer's first byte
    std::size_t m_next = 0;
    std::size_t m_end = 0;
};
