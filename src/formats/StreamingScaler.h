#pragma once

#include <cstdint>
#include <functional>

class CDibImage;

// Fills a 24-bit picture from source rows that arrive one at a time (bottom
// row first as a BMP stores them, or top row first as a JPEG decodes them; 3
// bytes per pixel), shrinking on the fly so that a
// file larger than the picture never has to be held whole. Horizontally each
// row goes through the RowResampler; vertically every output row is the
// truncated average of the source rows that fall on it. A run of identical
// source rows costs one fetch and one resampling, however long it is.
class StreamingScaler {
public:
    // Writes the next stored source row into `row` (at least
    // DibRowBytes(sourceWidth, 24) bytes) and returns how many stored rows in
    // a row are exactly like it (1 or more: a run of blank rows, say, is
    // fetched once), or 0 when it cannot.
    using RowFetcher = std::function<int(std::uint8_t* row)>;

    // kFileOk, kFileFailed when a row could not be fetched, kFileOutOfMemory
    // when the work buffers could not be had.
    static int Run(int sourceWidth, int sourceHeight, CDibImage& picture, const RowFetcher& fetchRow,
                   bool topRowFirst = false);

private:
    static int CopyRows(int sourceHeight, CDibImage& picture, const RowFetcher& fetchRow, bool topRowFirst);
    static int ShrinkRows(int sourceWidth, int sourceHeight, CDibImage& picture, const RowFetcher& fetchRow,
                          bool topRowFirst);
};
