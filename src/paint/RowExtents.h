#pragma once

#include "platform/HeapBlock.h"

#include <cstdint>

// Per-row leftmost and rightmost columns of a convex shape, collected from the
// pixels of its outline (points and Bresenham-stepped edges) and then drawn as
// one span per row. Because every edge pixel counts, the spans cover the whole
// band between the edges with no gaps at any slope. Rows outside firstRow ..
// lastRow (the rows that can be drawn) are ignored.
class RowExtents {
public:
    RowExtents(int firstRow, int lastRow);

    bool IsEmpty() const { return m_rows <= 0 || !m_block; }
    void AddPoint(int x, int y) {
        const int i = y - m_firstRow;
        if (static_cast<unsigned>(i) >= static_cast<unsigned>(m_rows)) {
            return;
        }
        if (x < m_left[i]) {
            m_left[i] = x;
        }
        if (x > m_right[i]) {
            m_right[i] = x;
        }
    }
    // Every pixel of the Bresenham line from (x0, y0) to (x1, y1), both ends
    // included.
    void AddLine(int x0, int y0, int x1, int y1);

    // Calls draw(left, right, row) for each row that holds a pixel.
    template <class Draw> void ForEachSpan(Draw&& draw) const {
        for (int i = 0; !IsEmpty() && i < m_rows; ++i) {
            if (m_left[i] <= m_right[i]) {
                draw(m_left[i], m_right[i], m_firstRow + i);
            }
        }
    }

private:
    platform::HeapBlock m_block;
    std::int32_t* m_left = nullptr;
    std::int32_t* m_right = nullptr;
    int m_firstRow = 0;
    int m_rows = 0;
};
