#include "image/RegionPixels.h"

#include "image/CDibImage.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {
// Blocks start small (most strokes are short) and double.
constexpr std::size_t kFirstBlockBytes = 64 * 1024;
constexpr std::size_t kLargestBlockBytes = 1024 * 1024;
constexpr int kFirstWindow = 32; // pixels
// Pixels saved beyond the ends of a row's interval, so that a stroke creeping
// sideways does not come back to the row at every dab: a few on both sides of
// a new interval (the stroke's direction is not known yet), more beyond an
// end that grows. Unsaved pixels are still original, so saving a few more is
// always right.
constexpr int kNewRowAhead = 8;
constexpr int kGrowthAhead = 48;
} // namespace

RegionPixels::RegionPixels(int width, int height, int bytesPerPixel)
    : m_width(width), m_height(height), m_bytesPerPixel(bytesPerPixel) {}

bool RegionPixels::Save(const CDibImage& image, int left, int top, int right, int bottom) {
    if (m_finished) {
        return false;
    }
    left = std::max(left, 0);
    top = std::max(top, 0);
    right = std::min(right, m_width - 1);
    bottom = std::min(bottom, m_height - 1);
    if (left > right || top > bottom) {
        return true;
    }
    if (Covers(&image, left, top, right, bottom)) {
        return true;
    }
    CoverRows(top, bottom);
    // What every row of the request holds afterwards becomes the covered
    // rectangle: a stroke's next requests mostly fall inside it.
    int commonLeft = 0;
    int commonRight = m_width;
    for (int y = top; y <= bottom; ++y) {
        Row& row = m_rows[static_cast<std::size_t>(y - m_top)];
        if (!(row.left < row.right && row.left <= left && right < row.right) &&
            !SaveRow(image, row, y, left, right + 1)) {
            m_coveredImage = nullptr;
            return false;
        }
        commonLeft = std::max(commonLeft, row.left);
        commonRight = std::min(commonRight, row.right);
    }
    m_coveredLeft = commonLeft;
    m_coveredRight = commonRight - 1;
    m_coveredTop = top;
    m_coveredBottom = bottom;
    m_coveredImage = &image;
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
        std::copy(m_rows.begin(), m_rows.end(), std::back_inserter(rows));
        m_rows = std::move(rows);
        m_top = first;
    }
    const int last = m_top + static_cast<int>(m_rows.size()) - 1;
    if (bottom > last) {
        m_rows.resize(static_cast<std::size_t>(bottom - m_top + 1));
    }
}

std::uint8_t* RegionPixels::Take(std::size_t bytes) {
    if (m_blocks.empty() || m_used + bytes > m_blocks.back().size()) {
        const std::size_t size =
            m_blocks.empty() ? kFirstBlockBytes : std::min(kLargestBlockBytes, 2 * m_blocks.back().size());
        platform::HeapBlock block = platform::HeapBlock::AllocateForOverwrite(std::max(bytes, size));
        if (!block) {
            return nullptr;
        }
        m_blocks.push_back(std::move(block));
        m_used = 0;
    }
    std::uint8_t* taken = m_blocks.back().data() + m_used;
    m_used += bytes;
    return taken;
}

// A new window twice the size the row needs, on the side it grows towards;
// the pixels saved so far move into it.
bool RegionPixels::GrowWindow(Row& row, int left, int right) {
    const int spare = std::max(kFirstWindow, right - left);
    const bool empty = row.left == row.right;
    const int windowLeft = empty || left < row.left ? std::max(0, left - (empty ? 0 : spare)) : row.left;
    const int windowRight = empty || right > row.right ? std::min(m_width, right + spare) : row.right;
    const std::size_t bpp = static_cast<std::size_t>(m_bytesPerPixel);
    std::uint8_t* window = Take(bpp * static_cast<std::size_t>(windowRight - windowLeft));
    if (window == nullptr) {
        return false;
    }
    if (!empty) {
        std::memcpy(window + bpp * (row.left - windowLeft), row.window + bpp * (row.left - row.windowLeft),
                    bpp * (row.right - row.left));
    }
    row.window = window;
    row.windowLeft = windowLeft;
    row.windowRight = windowRight;
    return true;
}

bool RegionPixels::SaveRow(const CDibImage& image, Row& row, int y, int left, int right) {
    const bool empty = row.left == row.right;
    const int ahead = empty ? kNewRowAhead : kGrowthAhead;
    const int aheadLeft = std::max(0, left - ahead);
    const int aheadRight = std::min(m_width, right + ahead);
    const int newLeft = empty ? aheadLeft : left < row.left ? std::min(aheadLeft, row.left) : row.left;
    const int newRight = empty ? aheadRight : right > row.right ? std::max(aheadRight, row.right) : row.right;
    if ((empty || newLeft < row.windowLeft || newRight > row.windowRight) &&
        !GrowWindow(row, newLeft, newRight)) {
        return false;
    }
    const std::size_t bpp = static_cast<std::size_t>(m_bytesPerPixel);
    const std::uint8_t* source = image.RowData(y);
    std::uint8_t* window = row.window - bpp * row.windowLeft; // indexed by pixel
    if (empty) {
        std::memcpy(window + bpp * newLeft, source + bpp * newLeft, bpp * (newRight - newLeft));
    } else {
        if (newLeft < row.left) {
            std::memcpy(window + bpp * newLeft, source + bpp * newLeft, bpp * (row.left - newLeft));
        }
        if (newRight > row.right) {
            std::memcpy(window + bpp * row.right, source + bpp * row.right, bpp * (newRight - row.right));
        }
    }
    row.left = newLeft;
    row.right = newRight;
    return true;
}

void RegionPixels::Finish() {
    m_coveredImage = nullptr;
    if (m_finished || m_blocks.empty()) {
        m_finished = true;
        return;
    }
    m_finished = true;
    const std::size_t bpp = static_cast<std::size_t>(m_bytesPerPixel);
    std::size_t total = 0;
    for (const Row& row : m_rows) {
        total += bpp * (row.right - row.left);
    }
    platform::HeapBlock packed = platform::HeapBlock::AllocateForOverwrite(std::max<std::size_t>(total, 1));
    if (!packed) {
        return; // the windows stay valid
    }
    std::uint8_t* out = packed.data();
    for (Row& row : m_rows) {
        const std::size_t bytes = bpp * (row.right - row.left);
        std::memcpy(out, row.window + bpp * (row.left - row.windowLeft), bytes);
        row.window = out;
        row.windowLeft = row.left;
        row.windowRight = row.right;
        out += bytes;
    }
    m_blocks.clear();
    m_blocks.push_back(std::move(packed));
    m_used = m_blocks.back().size();
    m_rows.shrink_to_fit();
}

void RegionPixels::SwapWith(CDibImage& image) {
    const std::size_t bpp = static_cast<std::size_t>(m_bytesPerPixel);
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        Row& row = m_rows[i];
        if (row.left == row.right) {
            continue;
        }
        std::uint8_t* saved = row.window + bpp * (row.left - row.windowLeft);
        std::uint8_t* target = image.RowData(m_top + static_cast<int>(i)) + bpp * row.left;
        std::swap_ranges(saved, saved + bpp * (row.right - row.left), target);
    }
    image.MutableBits();
}

std::size_t RegionPixels::Bytes() const {
    std::size_t total = sizeof(*this) + m_rows.capacity() * sizeof(Row);
    for (const platform::HeapBlock& block : m_blocks) {
        total += block.size();
    }
    return total;
}
