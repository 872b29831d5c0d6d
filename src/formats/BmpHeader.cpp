#include "formats/BmpHeader.h"

#include "formats/BufferedInput.h"

#include <climits>

namespace {
constexpr std::uint32_t kFileHeaderBytes = 14;
// Wider files are refused so that row buffers stay small whatever the header says.
constexpr int kWidestFile = 1 << 18;

enum Compression : std::uint32_t {
    kRgb = 0,
    kRle8 = 1,
    kRle4 = 2,
    kBitfields = 3,
    kAlphaBitfields = 6,
};

std::uint16_t Read16(const std::uint8_t* p) {
    return static_cast<std::uint16_t>(p[0] | (p[1] << 8));
}
std::uint32_t Read32(const std::uint8_t* p) {
    return static_cast<std::uint32_t>(p[0]) | (static_cast<std::uint32_t>(p[1]) << 8) |
           (static_cast<std::uint32_t>(p[2]) << 16) | (static_cast<std::uint32_t>(p[3]) << 24);
}

bool IsKnownHeaderSize(std::uint32_t size) {
    return size == 12 || (size >= 16 && size <= 64) || size == 108 || size == 124;
}

// OS/2 2.x headers share sizes 16..64 with Windows' 40, 52 and 56; their
// compression 3 and 4 mean Huffman and RLE24, which nothing common writes.
bool IsOs2Header(std::uint32_t size) {
    return size >= 16 && size <= 64 && size != 40 && size != 52 && size != 56;
}

bool ChooseCoding(std::uint32_t compression, std::uint32_t headerSize, BmpFormat& format) {
    const int bits = format.bitCount;
    switch (compression) {
    case kRgb:
        format.coding = BmpFormat::Coding::kPlain;
        return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    case kRle8:
        format.coding = BmpFormat::Coding::kRle8;
        return bits == 8 && !format.topDown;
    case kRle4:
        format.coding = BmpFormat::Coding::kRle4;
        return bits == 4 && !format.topDown;
    case kBitfields:
    case kAlphaBitfields:
        format.coding = BmpFormat::Coding::kBitfields;
        return !IsOs2Header(headerSize) && (bits == 16 || bits == 32);
    default:
        return false;
    }
}

void SetDefaultMasks(BmpFormat& format) {
    if (format.bitCount == 16) {
        format.masks[0] = 0x7C00;
        format.masks[1] = 0x03E0;
        format.masks[2] = 0x001F;
    } else {
        format.masks[0] = 0xFF0000;
        format.masks[1] = 0x00FF00;
        format.masks[2] = 0x0000FF;
    }
    format.masks[3] = 0;
}

// Bit-field masks: inside a 52-byte or larger header, else right after a
// 40-byte one (three masks, four for BI_ALPHABITFIELDS).
bool ReadMasks(BufferedInput& input, const std::uint8_t* header, std::uint32_t headerSize,
               std::uint32_t compression, BmpFormat& format) {
    std::uint8_t after[16] = {};
    const std::uint8_t* masks = header + 40;
    int count = headerSize >= 56 ? 4 : 3;
    if (headerSize < 52) {
        count = compression == kAlphaBitfields ? 4 : 3;
        if (!input.Read(after, 4 * static_cast<std::size_t>(count))) {
            return false;
        }
        masks = after;
    }
    for (int i = 0; i < count; ++i) {
        format.masks[i] = Read32(masks + 4 * i);
    }
    if (format.bitCount == 16) {
        for (std::uint32_t& mask : format.masks) {
            mask &= 0xFFFF;
        }
    }
    return format.masks[0] != 0 || format.masks[1] != 0 || format.masks[2] != 0;
}

bool ReadInfoHeader(BufferedInput& input, std::uint32_t headerSize, BmpFormat& format,
                    std::uint32_t& compression, std::uint32_t& colorsUsed) {
    std::uint8_t header[124] = {};
    if (!input.Read(header + 4, headerSize - 4)) {
        return false;
    }
    std::int64_t height = 0;
    if (headerSize == 12) {
        format.width = Read16(header + 4);
        height = Read16(header + 6);
        format.bitCount = Read16(header + 10);
        format.entryBytes = 3;
    } else {
        format.width = static_cast<std::int32_t>(Read32(header + 4));
        height = static_cast<std::int32_t>(Read32(header + 8));
        format.bitCount = Read16(header + 14);
        compression = headerSize >= 20 ? Read32(header + 16) : kRgb;
        colorsUsed = headerSize >= 36 ? Read32(header + 32) : 0;
    }
    format.topDown = height < 0;
    format.height = static_cast<int>(height < 0 ? -height : height);
    if (format.width <= 0 || format.width > kWidestFile || format.height <= 0 || height == INT_MIN) {
        return false;
    }
    if (!ChooseCoding(compression, headerSize, format)) {
        return false;
    }
    SetDefaultMasks(format);
    return format.coding != BmpFormat::Coding::kBitfields ||
           ReadMasks(input, header, headerSize, compression, format);
}
} // namespace

bool ReadBmpFormat(BufferedInput& input, BmpFormat& format) {
    std::uint8_t start[kFileHeaderBytes + 4];
    if (!input.Read(start, sizeof start) || start[0] != 'B' || start[1] != 'M') {
        return false;
    }
    const std::uint32_t pixelOffset = Read32(start + 10);
    const std::uint32_t headerSize = Read32(start + kFileHeaderBytes);
    if (!IsKnownHeaderSize(headerSize)) {
        return false;
    }
    std::uint32_t compression = kRgb;
    std::uint32_t colorsUsed = 0;
    if (!ReadInfoHeader(input, headerSize, format, compression, colorsUsed)) {
        return false;
    }
    format.tableAt = input.Position();
    std::uint64_t tableBytes = 0;
    if (format.bitCount <= 8) {
        const std::uint32_t most = 1u << format.bitCount;
        format.tableEntries = static_cast<int>(colorsUsed > 0 && colorsUsed < most ? colorsUsed : most);
        tableBytes = static_cast<std::uint64_t>(format.tableEntries) * static_cast<std::uint64_t>(format.entryBytes);
    }
    // The file header's offset wins (gaps, profiles, longer tables); a zero
    // offset means the pixels follow the table. A table cut short by the
    // offset keeps the entries before it.
    format.pixelsAt = pixelOffset != 0 ? pixelOffset : format.tableAt + tableBytes;
    if (format.pixelsAt < format.tableAt || format.pixelsAt >= input.Size()) {
        return false;
    }
    if (format.pixelsAt < format.tableAt + tableBytes) {
        format.tableEntries = static_cast<int>((format.pixelsAt - format.tableAt) / static_cast<std::uint64_t>(format.entryBytes));
    }
    return true;
}
