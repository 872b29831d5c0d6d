#pragma once

#include "formats/InputFile.h"
#include "platform/HeapBlock.h"

#include <cstdint>
#include <string>

// Reads uncompressed Windows bitmap files row by row: 12-, 40- and 64-byte
// headers, 1, 4, 8 and 24 bits per pixel (16 and 32 are read but not
// converted). The colour table is read as 4-byte entries directly after the
// header, and pixel rows directly after the table, bottom row first.
//
// Beyond the plain format the reader refuses, with a failure result, every
// file that cannot hold the rows its header promises, so a truncated or lying
// file never yields a half-read picture.
class CBmpReader {
public:
    // Checks signature and header, stores the size and depth and prepares the
    // row buffer; 1 on success, 0 otherwise.
    int ReadHeader(const std::string& path, int& width, int& height, int& bitCount);
    // Reads the colour table of `count` entries (bit counts 1, 4 and 8).
    int ReadPalette(int count);
    // Reads the next stored row into `dst` as 3 bytes per pixel (blue, green,
    // red); `dst` holds at least DibRowBytes(width, 24) bytes. 0 on a read error.
    int ReadRow(std::uint8_t* dst);
    // Closes the file and frees the table and the row buffer.
    void Close();

private:
    int ReadInfoHeader(std::uint32_t headerSize, int& width, int& height, int& bitCount);
    void ExpandRow(std::uint8_t* dst) const;

    InputFile m_file;
    std::uint64_t m_rowSize = 0;
    int m_bitCount = 0;
    int m_width = 0;
    platform::HeapBlock m_row;
    platform::HeapBlock m_table;
};
