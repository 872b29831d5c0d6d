#include "formats/GifStructure.h"

#include "formats/InputFile.h"
#include "platform/HeapBlock.h"

#include <cstdint>
#include <cstring>

namespace {
constexpr std::uint8_t kExtension = 0x21;
constexpr std::uint8_t kImage = 0x2C;

class ByteCursor {
public:
    ByteCursor(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}
    bool Skip(std::size_t bytes) {
        if (m_size - m_at < bytes) {
            return false;
        }
        m_at += bytes;
        return true;
    }
    bool Next(std::uint8_t& byte) {
        if (m_at >= m_size) {
            return false;
        }
        byte = m_data[m_at++];
        return true;
    }
    // Skips a colour table when `flags` says one follows.
    bool SkipTable(std::uint8_t flags) { return (flags & 0x80) == 0 || Skip(3u << ((flags & 7) + 1)); }
    // Skips data sub-blocks up to and including the zero-length terminator.
    bool SkipSubBlocks() {
        std::uint8_t length = 0;
        while (Next(length)) {
            if (length == 0) {
                return true;
            }
            if (!Skip(length)) {
                return false;
            }
        }
        return false;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_at = 0;
};

bool FirstImageComplete(ByteCursor& cursor) {
    std::uint8_t screen[13];
    for (std::uint8_t& byte : screen) {
        if (!cursor.Next(byte)) {
            return false;
        }
    }
    const long width = screen[6] | (screen[7] << 8);
    const long height = screen[8] | (screen[9] << 8);
    const bool sizeFits = width > 0 && height > 0;
    if (std::memcmp(screen, "GIF8", 4) != 0 || !sizeFits || !cursor.SkipTable(screen[10])) {
        return false;
    }
    std::uint8_t block = 0;
    while (cursor.Next(block)) {
        if (block == kExtension) {
            if (!cursor.Skip(1) || !cursor.SkipSubBlocks()) {
                return false;
            }
            continue;
        }
        std::uint8_t flags = 0;
        if (block != kImage || !cursor.Skip(8) || !cursor.Next(flags) || !cursor.SkipTable(flags)) {
            return false;
        }
        return cursor.Skip(1) && cursor.SkipSubBlocks(); // minimum code size, then the data
    }
    return false;
}
} // namespace

bool GifFirstImageIsComplete(const std::string& path) {
    InputFile file;
    if (!file.Open(path)) {
        return false;
    }
    platform::HeapBlock bytes = platform::HeapBlock::AllocateForOverwrite(file.Size());
    if (!bytes || !file.Read(bytes.data(), file.Size())) {
        return false;
    }
    ByteCursor cursor(bytes.data(), file.Size());
    return FirstImageComplete(cursor);
}
