#include "paint/RowExtents.h"

#include <algorithm>
#include <climits>
#include <cstdint>
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

// The walk this stands for steps from (x0, y0) towards (x1, y1): with
// dx = |x1 - x0|, dy = |y1 - y0| and step i along x, j along y, it moves along
// x when the line at i + 1/2 is at or below j + 1, and along y when the line
// at i + 1 is at or above j + 1/2. A line at most 45 degrees steep moves along
// x at every step, so the column i sits on row j = floor((2 i dy + dx) /
// (2 dx)) and a row is a run of columns; a steeper one moves along y at every
// step, so row j holds the one column floor((2 j dx + dy) / (2 dy)). Working
// the runs out from these gives the same pixels as the walk, in time for the
// rows inside firstRow..lastRow only, however long the line.
void RowExtents::AddLine(int x0, int y0, int x1, int y1) {
    if (IsEmpty()) {
        return;
    }
    const std::int64_t dx = std::abs(static_cast<std::int64_t>(x1) - x0);
    const std::int64_t dy = std::abs(static_cast<std::int64_t>(y1) - y0);
    const int stepX = x0 < x1 ? 1 : -1;
    const int top = std::max(std::min(y0, y1), m_firstRow);
    const int bottom = std::min(std::max(y0, y1), m_firstRow + m_rows - 1);
    // First column (from x0) of the run on row j of a flat line.
    const auto runStart = [dx, dy](std::int64_t j) {
        return j == 0 ? 0 : ((2 * j - 1) * dx + 2 * dy - 1) / (2 * dy);
    };
    for (int y = top; y <= bottom; ++y) {
        const std::int64_t j = std::abs(static_cast<std::int64_t>(y) - y0);
        std::int64_t first = 0;
        std::int64_t last = dx;
        if (dy != 0 && dx <= dy) {
            first = last = (2 * j * dx + dy) / (2 * dy);
        } else if (dy != 0) {
            first = runStart(j);
            last = j == dy ? dx : runStart(j + 1) - 1;
        }
        AddPoint(static_cast<int>(x0 + stepX * first), y);
        AddPoint(static_cast<int>(x0 + stepX * last), y);
    }
}
