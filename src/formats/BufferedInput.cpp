#include "formats/BufferedInput.h"

#include <algorithm>
#include <cstring>

bool BufferedInput::Open(const std::string& path) {
    Close();
    if (!m_buffer) {
        m_buffer = platform::HeapBlock::AllocateForOverwrite(kBufferBytes);
    }
    return m_buffer && m_file.Open(path);
}

void BufferedInput::Close() {
    m_file.Close();
    m_bufferStart = 0;
    m_next = 0;
    m_end = 0;
}

bool BufferedInput::Refill() {
    m_bufferStart += m_end;
    m_next = 0;
    m_end = m_file.ReadSome(m_buffer.data(), kBufferBytes);
    return m_end > 0;
}

bool BufferedInput::Read(void* dst, std::size_t bytes) {
    auto* out = static_cast<std::uint8_t*>(dst);
    while (bytes > 0) {
        if (m_next == m_end) {
            // Large requests go straight to the file once the buffer is used up.
            if (bytes >= kBufferBytes) {
                const std::size_t got = m_file.ReadSome(out, bytes);
                m_bufferStart += m_end + got;
                m_next = m_end = 0;
                return got == bytes;
            }
            if (!Refill()) {
                return false;
            }
        }
        const std::size_t take = std::min(bytes, m_end - m_next);
        std::memcpy(out, m_buffer.data() + m_next, take);
        m_next += take;
        out += take;
        bytes -= take;
    }
    return true;
}

bool BufferedInput::SkipTo(std::uint64_t offset) {
    if (offset < Position() || offset > Size()) {
        return false;
    }
    std::uint64_t rest = offset - Position();
    while (rest > 0) {
        if (m_next == m_end && !Refill()) {
            return false;
        }
        const std::size_t take = static_cast<std::size_t>(std::min<std::uint64_t>(rest, m_end - m_next));
        m_next += take;
        rest -= take;
    }
    return true;
}
