#include "formats/CBmpReader.h"

#include <array>

int CBmpReader::Open(const std::string& path, BmpFormat& format) {
    Close();
    m_format = BmpFormat{};
    m_outOfMemory = false;
    if (!m_input.Open(path)) {
        m_outOfMemory = !m_input.HasBuffer();
        return 0;
    }
    if (!ReadBmpFormat(m_input, m_format) || !PrepareRows()) {
        Close();
        return 0;
    }
    format = m_format;
    return 1;
}

bool CBmpReader::PrepareRows() {
    std::array<std::uint8_t, 256 * 4> table{};
    const std::size_t tableBytes =
        static_cast<std::size_t>(m_format.tableEntries) * static_cast<std::size_t>(m_format.entryBytes);
    if (!m_input.SkipTo(m_format.tableAt) || !m_input.Read(table.data(), tableBytes) ||
        !m_input.SkipTo(m_format.pixelsAt)) {
        return false;
    }
    if (!m_decoder.Prepare(m_format, table.data())) {
        m_outOfMemory = true;
        return false;
    }
    const auto width = static_cast<std::uint64_t>(m_format.width);
    const auto height = static_cast<std::uint64_t>(m_format.height);
    if (IsRunLength()) {
        m_outOfMemory = !m_rle.Start(m_input, m_format.width, m_format.height,
                                     m_format.coding == BmpFormat::Coding::kRle4);
        return !m_outOfMemory;
    }
    m_rowSize = (width * static_cast<std::uint64_t>(m_format.bitCount) + 31) / 32 * 4;
    // Every row must be there; the last one may lack its padding.
    const std::uint64_t lastRow = (width * static_cast<std::uint64_t>(m_format.bitCount) + 7) / 8;
    const std::uint64_t available = m_input.Size() - m_format.pixelsAt;
    if (height > available || m_rowSize * (height - 1) + lastRow > available) {
        return false;
    }
    m_row = platform::HeapBlock::Allocate(m_rowSize);
    m_outOfMemory = !m_row;
    return !m_outOfMemory;
}

int CBmpReader::ReadRow(std::uint8_t* dst) {
    if (IsRunLength()) {
        const std::uint8_t* indices = nullptr;
        const int run = m_rle.NextRows(indices);
        if (run > 0) {
            m_decoder.ExpandIndices(indices, dst);
        }
        return run;
    }
    const std::uint64_t rest = m_input.Size() - m_input.Position();
    const std::size_t bytes = static_cast<std::size_t>(rest < m_rowSize ? rest : m_rowSize);
    if (!m_input.Read(m_row.data(), bytes)) {
        return 0;
    }
    m_decoder.ExpandRow(m_row.data(), dst);
    return 1;
}

void CBmpReader::Close() {
    m_input.Close();
    m_row.reset();
    m_rowSize = 0;
}
