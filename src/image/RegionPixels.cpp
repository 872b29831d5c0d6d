#include "image/RegionPixels.h"

#include "image/CDibImage.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {
// Pixels saved beyond a growing edge of a row interval, so that a stroke
// creeping sideways does not grow the interval (a new block) at every dab.
// Unsaved pixels are still original, so saving a few more is always right.
constexpr int kRowSlack = 8;
} // namespace

RegionPixels::RegionPixels(int width, int height, int bytesPerPixel)
    : m_width(width), m_height(height), m_bytesPerPixel(bytesPerPixel) {}

bool RegionPixels::Matches(const CDibImage& image) const {
    return image.Width() == m_width && image.Height() == m_height && image.BitsPerPixel() == m_bytesPerPixel * 8;
}

bool RegionPixels::Save(const CDibImage& image, int left, int top, int right, int bottom) {
    left = std::max(left, 0);
    top = std::max(top, 0);
    right = std::min(right, m_width - 1);
    bottom = std::min(bottom, m_height - 1);
    if (left > right || top > bottom) {
        return true;
    }
    CoverRows(top, bottom);
    for (int y = top; y <= bottom; ++y) {
        if (!SaveRow(image, y, left, right + 1)) {
            return false;
        }
    }
    return true;
}

void RegionPixels::CoverRows(int top, int bottom) {
    if (m_rows.empty()) {
        m_top = top;
        m_rows.resize(static_cast<std::size_t>(bottom - top + 1));
        return;
    }
    if (top < m_top) {
        // Rows are added upwards in small steps as a stroke climbs; a margin
        // keeps that from moving the row table at every dab.
        const int first = std::max(0, std::min(top, m_top - 16));
        std::vector<Row> rows(static_cast<std::size_t>(m_top - first));
        rows.reserve(rows.size() + m_rows.size());
        std::move(m_rows.begin(), m_rows.end(), std::back_inserter(rows));
        m_rows = std::move(rows);
        m_top = first;
    }
    const int last = m_top + static_cast<int>(m_rows.size()) - 1;
    if (bottom > last) {
        m_rows.resize(static_cast<std::size_t>(bottom - m_top + 1));
    }
}

bool RegionPixels::SaveRow(const CDibImage& image, int y, int left, int right) {
    Row& row = m_rows[static_cast<std::size_t>(y - m_top)];
    const bool empty = row.left == row.right;
    if (!empty && row.left <= left && right <= row.right) {
        return true;
    }
    int newLeft = left;
    int newRight = right;
    if (empty) {
        newLeft = std::max(0, left - kRowSlack);
        newRight = std::min(m_width, right + kRowSlack);
    } else {
        newLeft = left < row.left ? std::max(0, left - kRowSlack) : row.left;
        newRight = right > row.right ? std::min(m_width, right + kRowSlack) : row.right;
    }
    const std::size_t bpp = static_cast<std::size_t>(m_bytesPerPixel);
    platform::HeapBlock bytes = platform::HeapBlock::AllocateForOverwrite(bpp * (newRight - newLeft));
    if (!bytes) {
        return false;
    }
    const std::uint8_t* source = image.RowData(y);
    if (empty) {
        std::memcpy(bytes.data(), source + bpp * newLeft, bpp * (newRight - newLeft));
    } else {
        std::memcpy(bytes.data(), source + bpp * newLeft, bpp * (row.left - newLeft));
        std::memcpy(bytes.data() + bpp * (row.left - newLeft), row.bytes.data(), bpp * (row.right - row.left));
        std::memcpy(bytes.data() + bpp * (row.right - newLeft), source + bpp * row.right,
                    bpp * (newRight - row.right));
    }
    row.left = newLeft;
    row.right = newRight;
    row.bytes = std::move(bytes);
    return true;
}

void RegionPixels::SwapWith(CDibImage& image) {
    const std::size_t bpp = static_cast<std::size_t>(m_bytesPerPixel);
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        Row& row = m_rows[i];
        if (row.left == row.right) {
            continue;
        }
        std::uint8_t* target = image.RowData(m_top + static_cast<int>(i)) + bpp * row.left;
        std::swap_ranges(row.bytes.data(), row.bytes.data() + bpp * (row.right - row.left), target);
    }
    image.MutableBits();
}

std::size_t RegionPixels::Bytes() const {
    std::size_t total = sizeof(*this) + m_rows.capacity() * sizeof(Row);
    for (const Row& row : m_rows) {
        total += row.bytes.size();
    }
    return total;
}
