#pragma once

#include "formats/JpegErrorHandler.h"

#include <cstdint>
#include <cstdio>
#include <string>

// Decodes a JPEG file row by row with libjpeg-turbo, at the largest DCT scale
// (1/1, 1/2, 1/4 or 1/8) whose output fits the given box; the smallest scale
// when none does. Rows come top first as blue, green, red bytes. A corrupt or
// truncated file gives a failure result; the process never exits.
class CJpegReader {
public:
    CJpegReader() = default;
    ~CJpegReader();
    CJpegReader(const CJpegReader&) = delete;
    CJpegReader& operator=(const CJpegReader&) = delete;

    // 1 when the file's header was read and decoding started; stores the
    // file's own size and the size the rows will have.
    int Open(const std::string& path, int maxWidth, int maxHeight, int& fileWidth, int& fileHeight,
             int& outWidth, int& outHeight);
    // Delivers the next row (outWidth x 3 bytes) into `row`; 0 on an error.
    int ReadRow(std::uint8_t* row);
    void Close();

private:
    int StartDecoding(int maxWidth, int maxHeight);
    void ChooseScale(int maxWidth, int maxHeight);

    jpeg_decompress_struct m_info{};
    JpegErrorHandler m_error{};
    std::FILE* m_file = nullptr;
    bool m_created = false;
};
