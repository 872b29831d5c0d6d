#pragma once

#include "formats/JpegErrorHandler.h"
#include "formats/JpegWorkMeter.h"
#include "platform/HeapBlock.h"

#include <cstdint>
#include <cstdio>
#include <string>

// Decodes a JPEG file row by row with libjpeg-turbo, at the largest DCT scale
// (1/1, 1/2, 1/4 or 1/8) whose output, once turned upright by the file's
// EXIF orientation, fits the given box; the smallest scale when none does.
// Rows come top first, in the file's stored orientation, as blue, green, red
// bytes; greyscale, YCbCr, CMYK and YCCK files (Adobe's inverted CMYK
// included) all arrive as such. A corrupt or truncated file gives a failure
// result; the process never exits.
//
// Hostile files are refused before they cost much: one declaring far more
// pixels than its bytes could describe, one whose scans would take more work
// than a few passes over its picture or are too many (JpegWorkMeter), and one
// whose decoder would need more memory than four pictures of the box
// (libjpeg's max_memory_to_use).
class CJpegReader {
public:
    CJpegReader() = default;
    ~CJpegReader();
    CJpegReader(const CJpegReader&) = delete;
    CJpegReader& operator=(const CJpegReader&) = delete;

    // 1 when the file's header was read and decoding started; stores the
    // file's own stored size and the size the rows will have.
    int Open(const std::string& path, int maxWidth, int maxHeight, int& fileWidth, int& fileHeight,
             int& outWidth, int& outHeight);
    // The EXIF orientation (1..8) of the open file.
    int Orientation() const { return m_orientation; }
    // Delivers the next row (outWidth x 3 bytes) into `row`; 0 on an error.
    int ReadRow(std::uint8_t* row);
    void Close();

private:
    int StartDecoding(int maxWidth, int maxHeight, std::uint64_t fileBytes);
    void Limit(int maxWidth, int maxHeight);
    void ReadOrientation();
    void ChooseColors();
    void ChooseScale(int maxWidth, int maxHeight);
    void CmykToBgr(std::uint8_t* row) const;

    jpeg_decompress_struct m_info{};
    JpegErrorHandler m_error{};
    JpegWorkMeter m_work{};
    std::FILE* m_file = nullptr;
    bool m_created = false;
    bool m_cmyk = false;
    int m_orientation = 1;
    platform::HeapBlock m_cmykRow;
};
