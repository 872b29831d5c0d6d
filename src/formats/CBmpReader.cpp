#include "formats/CBmpReader.h"

#include <cstring>

namespace {
constexpr std::uint32_t kFileHeaderBytes = 14;

std::uint16_t Read16(const std::uint8_t* p) {
    return static_cast<std::uint16_t>(p[0] | (p[1] << 8));
}
std::uint32_t Read32(const std::uint8_t* p) {
    return static_cast<std::uint32_t>(p[0]) | (static_cast<std::uint32_t>(p[1]) << 8) |
           (static_cast<std::uint32_t>(p[2]) << 16) | (static_cast<std::uint32_t>(p[3]) << 24);
}

bool IsReadableBitCount(int bitCount) {
    return bitCount == 1 || bitCount == 4 || bitCount == 8 || bitCount == 16 || bitCount == 24 ||
           bitCount == 32;
}
} // namespace

int CBmpReader::ReadHeader(const std::string& path, int& width, int& height, int& bitCount) {
    Close();
    std::uint8_t start[kFileHeaderBytes + 4];
    if (!m_file.Open(path) || !m_file.Read(start, sizeof start) || start[0] != 'B' || start[1] != 'M') {
        Close();
        return 0;
    }
    const std::uint32_t headerSize = Read32(start + kFileHeaderBytes);
    if (headerSize != 12 && headerSize != 40 && headerSize != 64) {
        Close();
        return 0;
    }
    if (!ReadInfoHeader(headerSize, width, height, bitCount)) {
        Close();
        return 0;
    }
    return 1;
}

int CBmpReader::ReadInfoHeader(std::uint32_t headerSize, int& width, int& height, int& bitCount) {
    std::uint8_t header[64] = {};
    if (!m_file.Read(header + 4, headerSize - 4)) {
        return 0;
    }
    if (headerSize == 12) {
        width = Read16(header + 4);
        height = Read16(header + 6);
        bitCount = Read16(header + 10);
    } else {
        width = static_cast<std::int32_t>(Read32(header + 4));
        height = static_cast<std::int32_t>(Read32(header + 8));
        bitCount = Read16(header + 14);
    }
    if (width <= 0 || height <= 0 || !IsReadableBitCount(bitCount)) {
        return 0;
    }
    m_rowSize = (static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(bitCount) + 31) / 32 * 4;
    const std::uint64_t tableBytes = bitCount <= 8 ? 4ull << bitCount : 0;
    const std::uint64_t pixelsAt = kFileHeaderBytes + headerSize + tableBytes;
    const std::uint64_t fileSize = m_file.Size();
    // The rows must all be there (checked without overflow: each factor is
    // first bounded by the file size).
    if (pixelsAt > fileSize || m_rowSize > fileSize || static_cast<std::uint64_t>(height) > fileSize ||
        m_rowSize * static_cast<std::uint64_t>(height) > fileSize - pixelsAt) {
        return 0;
    }
    m_row = platform::HeapBlock::Allocate(m_rowSize);
    if (!m_row) {
        return 0;
    }
    m_bitCount = bitCount;
    m_width = width;
    return 1;
}

int CBmpReader::ReadPalette(int count) {
    m_table = platform::HeapBlock::Allocate(static_cast<std::size_t>(count) * 4);
    return m_table && m_file.Read(m_table.data(), m_table.size()) ? 1 : 0;
}

int CBmpReader::ReadRow(std::uint8_t* dst) {
    if (m_bitCount == 24) {
        return m_file.Read(dst, m_rowSize) ? 1 : 0;
    }
    if (!m_file.Read(m_row.data(), m_rowSize)) {
        return 0;
    }
    ExpandRow(dst);
    return 1;
}

void CBmpReader::ExpandRow(std::uint8_t* dst) const {
    if (m_bitCount > 8 || !m_table) {
        return; // 16 and 32 bits are not converted
    }
    const std::uint8_t* row = m_row.data();
    const std::uint8_t* table = m_table.data();
    const int perByte = 8 / m_bitCount;
    const int mask = (1 << m_bitCount) - 1;
    for (int x = 0; x < m_width; ++x) {
        const int shift = 8 - m_bitCount * (x % perByte + 1);
        const int index = (row[x / perByte] >> shift) & mask;
        std::memcpy(dst, table + 4 * index, 3);
        dst += 3;
    }
}

void CBmpReader::Close() {
    m_file.Close();
    m_row.reset();
    m_table.reset();
    m_rowSize = 0;
    m_bitCount = 0;
    m_width = 0;
}
