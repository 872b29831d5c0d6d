#include "formats/BmpRleDecoder.h"

#include "formats/BmpRunKernels.h"
#include "formats/BufferedInput.h"

#include <algorithm>
#include <cstring>

namespace {
constexpr int kStoreBytes = 8;
} // namespace

bool BmpRleDecoder::Start(BufferedInput& input, int width, int height, bool fourBits) {
    m_input = &input;
    m_width = width;
    m_rowsLeft = height;
    m_blankRows = 0;
    m_nextX = 0;
    m_fourBits = fourBits;
    m_ended = false;
    // Room for a whole 8-byte store at the row's end (see DecodeBufferedRuns).
    m_row = platform::HeapBlock::Allocate(static_cast<std::size_t>(width) + kStoreBytes);
    return static_cast<bool>(m_row);
}

int BmpRleDecoder::NextRows(const std::uint8_t*& indices) {
    if (m_rowsLeft <= 0) {
        return 0;
    }
    std::memset(m_row.data(), 0, static_cast<std::size_t>(m_width));
    indices = m_row.data();
    if (m_ended || m_blankRows > 0) {
        const int run = m_ended ? m_rowsLeft : std::min(m_blankRows, m_rowsLeft);
        m_rowsLeft -= run;
        m_blankRows -= m_ended ? 0 : run;
        return run;
    }
    --m_rowsLeft;
    m_x = m_nextX;
    m_nextX = 0;
    return DecodeUntilRowEnds() ? 1 : 0;
}

// Reads codes until the row is finished by end of line, end of picture or a
// delta that moves up.
bool BmpRleDecoder::DecodeUntilRowEnds() {
    for (;;) {
        if (!m_fourBits) {
            DecodeBufferedRuns();
        }
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
            if (!m_fourBits && CopyBufferedAbsolute(value)) {
                continue;
            }
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

// RLE8 encoded runs straight from the input's buffer, until an escape code or
// the buffer's end (both left to the caller). Groups of short runs, the
// common case in noisy pictures, go to the vector expander (which leaves
// zeros beyond its last run); the others are one 8-byte store each: the row
// has room for it, the bytes beyond one run are overwritten by the next, and
// those beyond the last are cleared again (no code has reached them yet, so
// they hold index 0).
void BmpRleDecoder::DecodeBufferedRuns() {
    std::size_t available = 0;
    const std::uint8_t* const start = m_input->Buffered(available);
    const std::uint8_t* code = start;
    const std::uint8_t* const last = start + (available & ~std::size_t{1});
    std::uint8_t* const row = m_row.data();
    const int width = m_width;
    int x = m_x;
    while (code != last && code[0] != 0) {
        code = bmp_run_kernels::ExpandShortRuns(code, last, row, x, width);
        for (int n = 0; n < 8 && code != last && code[0] != 0; ++n) {
            // Far from the row's end no run needs clipping.
            const int count = x + 255 <= width ? code[0] : std::min<int>(code[0], width - x);
            const std::uint64_t spread = code[1] * 0x0101010101010101ull;
            std::memcpy(row + x, &spread, kStoreBytes);
            if (count > kStoreBytes) {
                std::memset(row + x, code[1], static_cast<std::size_t>(count));
            }
            x += count;
            code += 2;
        }
    }
    std::memset(row + x, 0, kStoreBytes);
    m_x = x;
    m_input->Advance(static_cast<std::size_t>(code - start));
}

// An RLE8 absolute run that lies wholly in the input's buffer, copied at once
// (with its padding to a 16-bit boundary); false leaves it to Absolute.
bool BmpRleDecoder::CopyBufferedAbsolute(int count) {
    std::size_t available = 0;
    const std::uint8_t* bytes = m_input->Buffered(available);
    const auto padded = static_cast<std::size_t>(count + (count & 1));
    if (available < padded) {
        return false;
    }
    const int inRow = std::min(count, m_width - m_x);
    std::memcpy(m_row.data() + m_x, bytes, static_cast<std::size_t>(inRow));
    m_x += inRow;
    m_input->Advance(padded);
    return true;
}
