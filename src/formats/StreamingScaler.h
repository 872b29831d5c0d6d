#pragma once

#include <cstdint>
#include <functional>

class CDibImage;

// Fills a 24-bit picture from source rows that arrive one at a time (bottom
// row first as a BMP stores them, or top row first as a JPEG decodes them; 3
// bytes per pixel), shrinking on the fly so that a
// file larger than the picture never has to be held whole. Horizontally each
// row goes through the RowResampler; vertically every output row is the
// truncated average of the source rows that fall on it.
class StreamingScaler {
public:
    // Writes the next stored source row into `row` (at least
    // DibRowBytes(sourceWidth, 24) bytes); false when it cannot.
    using RowFetcher = std::function<bool(std::uint8_t* row)>;

    // kFileOk, kFileFailed when a row could not be fetched, kFileOutOfMemory
    // when the work buffers could not be had.
    static int Run(int sourceWidth, int sourceHeight, CDibImage& picture, const RowFetcher& fetchRow,
                   bool topRowFirst = false);

private:
    static int CopyRows(int sourceHeight, CDibImage& picture, const RowFetcher& fetchRow, bool topRowFirst);
};
