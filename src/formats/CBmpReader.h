#pragma once

#include "formats/BmpHeader.h"
#include "formats/BmpRleDecoder.h"
#include "formats/BmpRowDecoder.h"
#include "formats/BufferedInput.h"
#include "platform/HeapBlock.h"

#include <cstdint>
#include <string>

// Reads Windows bitmap files row by row, in the order they are stored: the
// headers common programs write (12, 16..64, 40, 52, 56, 108 and 124 bytes),
// colour tables of any length up to 2^bits, the pixels at the file header's
// offset, 1, 2, 4, 8, 16, 24 and 32 bits per pixel, bit fields, RLE8 and
// RLE4. Every row comes out as 3 bytes per pixel (blue, green, red).
//
// An uncompressed file must hold every row its header promises, so a
// truncated or lying file never yields a half-read picture.
class CBmpReader {
public:
    // Reads the headers and the colour table and moves to the pixels; 1 on
    // success, 0 for anything unreadable (OutOfMemory() tells when a buffer
    // could not be had).
    int Open(const std::string& path, BmpFormat& format);
    bool OutOfMemory() const { return m_outOfMemory; }
    // Some row read so far had transparent or translucent pixels.
    bool SawTransparency() const { return m_decoder.SawTransparency(); }
    // Reads the next stored row into `dst` (at least width x 3 bytes) and
    // returns how many stored rows from it on are the same (more than one for
    // the blank runs of RLE files); 0 on a read error.
    int ReadRow(std::uint8_t* dst);
    bool IsRunLength() const { return m_format.coding == BmpFormat::Coding::kRle8 ||
                                      m_format.coding == BmpFormat::Coding::kRle4; }
    std::uint64_t FileSize() const { return m_input.Size(); }
    void Close();

private:
    bool PrepareRows();

    BufferedInput m_input;
    BmpFormat m_format;
    BmpRowDecoder m_decoder;
    BmpRleDecoder m_rle;
    std::uint64_t m_rowSize = 0;
    platform::HeapBlock m_row;
    bool m_outOfMemory = false;
};
