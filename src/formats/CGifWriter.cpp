#include "formats/CGifWriter.h"

#include "formats/FileResult.h"
#include "formats/SafeFileWriter.h"
#include "image/DibHelpers.h"
#include "image/DibTypes.h"

#include <cstring>

namespace {
constexpr int kHashSize = 5101;
constexpr int kHashShift = 4;
constexpr int kEmpty = -1;
constexpr int kClearCode = 256;
constexpr int kEndCode = 257;
constexpr int kFirstFreeCode = 258;
constexpr int kLargestCodeSize = 12;
constexpr std::size_t kTableBytes = (kHashSize + 1) * sizeof(std::int32_t);

void Put16(std::uint8_t* p, int v) {
    p[0] = static_cast<std::uint8_t>(v);
    p[1] = static_cast<std::uint8_t>(v >> 8);
}
} // namespace

CGifWriter::CGifWriter()
    : m_code(platform::HeapBlock::Allocate(kTableBytes)),
      m_prefix(platform::HeapBlock::Allocate(kTableBytes)),
      m_suffix(platform::HeapBlock::Allocate(kTableBytes)) {}

int CGifWriter::WriteGif(const std::uint8_t* packedDib, std::size_t size, const std::string& path) {
    if (!IsValid()) {
        return kFileOutOfMemory;
    }
    BitmapInfoHeader header;
    constexpr std::size_t kTableOffset = sizeof header;
    constexpr std::size_t kBitsOffset = kTableOffset + 256 * sizeof(RgbQuad);
    if (packedDib == nullptr || size < kBitsOffset) {
        return kFileFailed;
    }
    std::memcpy(&header, packedDib, sizeof header);
    const int width = header.biWidth;
    const int height = header.biHeight;
    if (header.biBitCount != 8 || width <= 0 || height <= 0 || width > 65535 || height > 65535 ||
        size - kBitsOffset <
            static_cast<std::size_t>(DibRowBytes(width, 8)) * static_cast<std::size_t>(height)) {
        return kFileFailed;
    }
    SafeFileWriter file(path);
    if (!file.Open()) {
        return kFileFailed;
    }
    m_file = &file;
    const std::uint8_t trailer[2] = {0x00, 0x3B};
    bool written = WriteHeader(width, height, packedDib + kTableOffset);
    if (written) {
        Compress(packedDib + kBitsOffset, width, height);
        written = file.Write(trailer, sizeof trailer) && file.Commit();
    }
    m_file = nullptr;
    return written ? kFileOk : kFileFailed;
}

bool CGifWriter::WriteHeader(int width, int height, const std::uint8_t* rgbQuads) {
    std::uint8_t screen[13] = {'G', 'I', 'F', '8', '7', 'a'};
    Put16(screen + 6, width);
    Put16(screen + 8, height);
    screen[10] = 0xF7; // global table, 8-bit colour resolution, 256 entries
    std::uint8_t table[768];
    for (int i = 0; i < 256; ++i) {
        table[3 * i] = rgbQuads[4 * i + 2];
        table[3 * i + 1] = rgbQuads[4 * i + 1];
        table[3 * i + 2] = rgbQuads[4 * i];
    }
    std::uint8_t descriptor[11] = {0x2C};
    Put16(descriptor + 5, width);
    Put16(descriptor + 7, height);
    descriptor[10] = 8; // minimum code size
    return m_file->Write(screen, sizeof screen) && m_file->Write(table, sizeof table) &&
           m_file->Write(descriptor, sizeof descriptor);
}

void CGifWriter::ResetTable() {
    m_codeSize = 9;
    m_nextCode = kFirstFreeCode;
    m_sizeLimit = 1 << m_codeSize;
    std::memset(m_code.data(), 0xFF, kTableBytes); // every slot kEmpty
}

int CGifWriter::FindOrAdd(int prefix, int suffix) {
    auto* code = reinterpret_cast<std::int32_t*>(m_code.data());
    auto* prefixes = reinterpret_cast<std::int32_t*>(m_prefix.data());
    auto* suffixes = reinterpret_cast<std::int32_t*>(m_suffix.data());
    int slot = (suffix << kHashShift) ^ prefix;
    if (code[slot] != kEmpty) {
        const int step = slot == 0 ? 1 : kHashSize - slot;
        while (prefixes[slot] != prefix || suffixes[slot] != suffix) {
            slot -= step;
            if (slot < 0) {
                slot += kHashSize;
            }
            if (code[slot] == kEmpty) {
                break;
            }
        }
        if (code[slot] != kEmpty) {
            return code[slot];
        }
    }
    code[slot] = m_nextCode;
    prefixes[slot] = prefix;
    suffixes[slot] = suffix;
    return kEmpty;
}

void CGifWriter::Compress(const std::uint8_t* bits, int width, int height) {
    m_blockCount = 0;
    m_bitBuffer = 0;
    m_bitCount = 0;
    ResetTable();
    EmitCode(kClearCode);
    const std::size_t rowBytes = DibRowBytes(width, 8);
    int current = -1;
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* row = bits + static_cast<std::size_t>(height - 1 - y) * rowBytes;
        for (int x = 0; x < width; ++x) {
            const int pixel = row[x];
            if (current < 0) {
                current = pixel;
                continue;
            }
            const int found = FindOrAdd(current, pixel);
            if (found != kEmpty) {
                current = found;
                continue;
            }
            EmitCode(current);
            current = pixel;
            if (++m_nextCode > m_sizeLimit) {
                if (m_codeSize < kLargestCodeSize) {
                    ++m_codeSize;
                    m_sizeLimit = m_codeSize == kLargestCodeSize ? 4095 : m_sizeLimit * 2;
                } else {
                    EmitCode(kClearCode);
                    ResetTable();
                }
            }
        }
    }
    EmitCode(current);
    EmitCode(kEndCode);
    FlushBits();
}

void CGifWriter::EmitCode(int code) {
    m_bitBuffer |= static_cast<std::uint32_t>(code) << m_bitCount;
    m_bitCount += m_codeSize;
    while (m_bitCount >= 8) {
        PutByte(static_cast<std::uint8_t>(m_bitBuffer));
        m_bitBuffer >>= 8;
        m_bitCount -= 8;
    }
}

void CGifWriter::PutByte(std::uint8_t byte) {
    m_block[1 + m_blockCount++] = byte;
    if (m_blockCount == 255) {
        WriteBlock();
    }
}

void CGifWriter::FlushBits() {
    if (m_bitCount > 0) {
        PutByte(static_cast<std::uint8_t>(m_bitBuffer));
        m_bitBuffer = 0;
        m_bitCount = 0;
    }
    if (m_blockCount > 0) {
        WriteBlock();
    }
}

void CGifWriter::WriteBlock() {
    m_block[0] = static_cast<std::uint8_t>(m_blockCount);
    m_file->Write(m_block, static_cast<std::size_t>(m_blockCount) + 1);
    m_blockCount = 0;
}
