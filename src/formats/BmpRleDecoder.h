#pragma once

#include "platform/HeapBlock.h"

#include <cstdint>

class BufferedInput;

// Decodes RLE8 and RLE4 pixel data one stored row at a time (bottom row
// first) into colour-table indices, one per byte. Understands encoded runs,
// absolute runs, end of line, end of picture and delta moves; pixels a run
// puts beyond the row's end and rows beyond the picture's top are dropped,
// and pixels no code reaches keep index 0. Data that ends before the last
// row is an error. Rows no code reaches at all (those a delta passes over,
// and every row after the end of the picture) come out as one blank run, so
// that their number costs nothing however large the picture declares itself.
class BmpRleDecoder {
public:
    // False when the row buffer cannot be had.
    bool Start(BufferedInput& input, int width, int height, bool fourBits);
    // Decodes the next stored row and points `indices` at it (width bytes,
    // valid until the next call). Returns how many stored rows, from this one
    // on, hold exactly these indices: more than one only for a blank run. 0
    // on cut-short data.
    int NextRows(const std::uint8_t*& indices);

private:
    bool DecodeUntilRowEnds();
    void DecodeBufferedRuns();
    bool CopyBufferedAbsolute(int count);
    bool Absolute(int count);
    void Put(int index) {
        if (m_x < m_width) {
            m_row.data()[m_x++] = static_cast<std::uint8_t>(index);
        }
    }

    BufferedInput* m_input = nullptr;
    platform::HeapBlock m_row;
    int m_width = 0;
    int m_rowsLeft = 0;  // rows not yet handed out
    int m_blankRows = 0; // rows a delta or end of picture passes over
    int m_nextX = 0;     // where the row after a delta starts
    int m_x = 0;
    bool m_fourBits = false;
    bool m_ended = false; // end of picture: every remaining row is blank
};
