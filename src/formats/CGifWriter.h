#pragma once

#include "platform/HeapBlock.h"

#include <cstddef>
#include <cstdint>
#include <string>

class SafeFileWriter;

// Writes a single-image GIF87a file with a 256-entry global colour table and
// LZW-compressed pixels from a packed 8-bit DIB (40-byte header, 256 RGBQUAD
// entries, bottom-up rows). One code stream for the whole image: codes grow
// from 9 to 12 bits, and when the table is full a clear code starts it over.
// Pairs are found through an open-addressing hash of 5101 slots.
class CGifWriter {
public:
    CGifWriter();
    // False when the code tables could not be allocated.
    bool IsValid() const { return m_code && m_prefix && m_suffix; }

    // kFileOk, kFileFailed (a file error or a DIB that is not 8-bit), or
    // kFileOutOfMemory. The file replaces `path` only when complete.
    int WriteGif(const std::uint8_t* packedDib, std::size_t size, const std::string& path);

private:
    bool WriteHeader(int width, int height, const std::uint8_t* rgbQuads);
    void Compress(const std::uint8_t* bits, int width, int height);
    int FindOrAdd(int prefix, int suffix); // the pair's code, or -1 when it was added
    void ResetTable();
    void EmitCode(int code);
    void PutByte(std::uint8_t byte);
    void FlushBits();
    void WriteBlock();

    platform::HeapBlock m_code;
    platform::HeapBlock m_prefix;
    platform::HeapBlock m_suffix;
    SafeFileWriter* m_file = nullptr;
    std::uint8_t m_block[256] = {};
    int m_blockCount = 0;
    std::uint32_t m_bitBuffer = 0;
    int m_bitCount = 0;
    int m_codeSize = 9;
    int m_nextCode = 258;
    int m_sizeLimit = 512;
};
