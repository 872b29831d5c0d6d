#include "paint/RowExtents.h"

#include <climits>
#include <cstdlib>

RowExtents::RowExtents(int firstRow, int lastRow) : m_firstRow(firstRow), m_rows(lastRow - firstRow + 1) {
    if (m_rows <= 0) {
        return;
    }
    m_block = platform::HeapBlock::Allocate(static_cast<std::size_t>(m_rows) * 2 * sizeof(std::int32_t));
    if (!m_block) {
        return;
    }
    m_left = reinterpret_cast<std::int32_t*>(m_block.data());
    m_right = m_left + m_rows;
    for (int i = 0; i < m_rows; ++i) {
        m_left[i] = INT_MAX;
        m_right[i] = INT_MIN;
    }
}

void RowExtents::AddLine(int x0, int y0, int x1, int y1) {
    if (IsEmpty()) {
        return;
    }
    const int dx = std::abs(x1 - x0);
    const int dy = -std::abs(y1 - y0);
    const int stepX = x0 < x1 ? 1 : -1;
    const int stepY = y0 < y1 ? 1 : -1;
    int error = dx + dy;
    for (;;) {
        AddPoint(x0, y0);
        if (x0 == x1 && y0 == y1) {
            return;
        }
        const int twice = 2 * error;
        if (twice >= dy) {
            error += dy;
            x0 += stepX;
        }
        if (twice <= dx) {
            error += dx;
            y0 += stepY;
        }
    }
}
