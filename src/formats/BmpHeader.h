#pragma once

#include <cstdint>

class BufferedInput;

// How a BMP file's pixels are stored, as its headers say.
struct BmpFormat {
    enum class Coding { kPlain, kRle8, kRle4, kBitfields };

    int width = 0;
    int height = 0;         // always positive
    bool topDown = false;   // a negative height in the file: rows top first
    int bitCount = 0;       // 1, 2, 4, 8, 16, 24 or 32
    Coding coding = Coding::kPlain;
    std::uint32_t masks[4] = {}; // red, green, blue, alpha (bit fields; alpha 0 = opaque)
    int tableEntries = 0;   // colour table entries present in the file (bit counts up to 8)
    int entryBytes = 4;     // 3 after the 12-byte header, else 4
    std::uint64_t tableAt = 0;
    std::uint64_t pixelsAt = 0;
};

// Reads the file header, the info header (12 bytes; 16 to 64 for OS/2 2.x
// and Windows' 40, 52 and 56; 108; 124) and any bit-field masks that follow
// it, and works out where the table and the pixels are. Leaves the input just
// after what it read. False for anything this reader cannot decode: an
// unknown header size, a compression other than none, RLE8, RLE4 and bit
// fields (embedded JPEG or PNG, OS/2 Huffman or RLE24), impossible sizes,
// depths or offsets.
bool ReadBmpFormat(BufferedInput& input, BmpFormat& format);
