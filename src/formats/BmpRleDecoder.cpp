#include "formats/BmpRleDecoder.h"

#include "formats/BufferedInput.h"

#include <algorithm>
#include <cstring>

bool BmpRleDecoder::Start(BufferedInput& input, int width, int height, bool fourBits) {
    m_input = &input;
    m_width = width;
    m_rowsLeft = height;
    m_blankRows = 0;
    m_nextX = 0;
    m_fourBits = fourBits;
    m_ended = false;
    m_row = platform::HeapBlock::Allocate(static_cast<std::size_t>(width));
    return static_cast<bool>(m_row);
}

bool BmpRleDecoder::NextRow(std::uint8_t* indices) {
    if (m_rowsLeft <= 0) {
        return false;
    }
    --m_rowsLeft;
    std::memset(m_row.data(), 0, static_cast<std::size_t>(m_width));
    if (m_ended || m_blankRows > 0) {
        m_blankRows -= m_blankRows > 0 ? 1 : 0;
    } else {
        m_x = m_nextX;
        m_nextX = 0;
        if (!DecodeUntilRowEnds()) {
            return false;
        }
    }
    std::memcpy(indices, m_row.data(), static_cast<std::size_t>(m_width));
    return true;
}

// Reads codes until the row is finished by end of line, end of picture or a
// delta that moves up.
bool BmpRleDecoder::DecodeUntilRowEnds() {
    for (;;) {
        const int count = m_input->Byte();
        const int value = m_input->Byte();
        if (count < 0 || value < 0) {
            return false;
        }
        if (count > 0 && !m_fourBits) {
            const int inRow = std::min(count, m_width - m_x);
            std::memset(m_row.data() + m_x, value, static_cast<std::size_t>(inRow));
            m_x += inRow;
            continue;
        }
        if (count > 0) {
            for (int i = 0; i < count; ++i) {
                Put(i % 2 == 0 ? value >> 4 : value & 0x0F);
            }
            continue;
        }
        if (value == 0) {
            return true; // end of line
        }
        if (value == 1) {
            m_ended = true; // end of picture
            return true;
        }
        if (value >= 3) {
            if (!Absolute(value)) {
                return false;
            }
            continue;
        }
        const int dx = m_input->Byte();
        const int dy = m_input->Byte();
        if (dx < 0 || dy < 0) {
            return false;
        }
        if (dy == 0) {
            m_x = std::min(m_x + dx, m_width);
            continue;
        }
        m_blankRows = dy - 1;
        m_nextX = std::min(m_x + dx, m_width);
        return true;
    }
}

// `count` literal indices, padded to a 16-bit boundary.
bool BmpRleDecoder::Absolute(int count) {
    const int bytes = m_fourBits ? (count + 1) / 2 : count;
    int value = 0;
    for (int i = 0; i < count; ++i) {
        if (!m_fourBits || i % 2 == 0) {
            value = m_input->Byte();
            if (value < 0) {
                return false;
            }
        }
        Put(m_fourBits ? (i % 2 == 0 ? value >> 4 : value & 0x0F) : value);
    }
    return bytes % 2 == 0 || m_input->Byte() >= 0;
}
