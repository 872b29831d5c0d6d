#include "ops/CImageTransform.h"

#include "image/CDibImage.h"
#include "ops/FilterMath.h"
#include "ops/RowPasses.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int kTile = 64;

TAMRICK_VECTOR_CLONES void ReversePixels(const std::uint8_t* __restrict in, std::uint8_t* __restrict out,
                                         int width) {
    const int last = width - 1;
    for (int x = 0; x < width; ++x) {
        out[3 * x] = in[3 * (last - x)];
        out[3 * x + 1] = in[3 * (last - x) + 1];
        out[3 * x + 2] = in[3 * (last - x) + 2];
    }
}

void ReverseBits(const std::uint8_t* in, std::uint8_t* out, int width) {
    std::memset(out, 0, static_cast<std::size_t>((width + 7) / 8));
    for (int x = 0; x < width; ++x) {
        const int from = width - 1 - x;
        if ((in[from >> 3] >> (7 - (from & 7))) & 1) {
            out[x >> 3] = static_cast<std::uint8_t>(out[x >> 3] | (0x80 >> (x & 7)));
        }
    }
}

// Copies `count` pixels, one from each stored row `step` bytes apart, into a row.
void CopyColumnToRow(const std::uint8_t* in, std::ptrdiff_t step, std::uint8_t* __restrict out, int count) {
    for (int k = 0; k < count; ++k, in += step, out += 3) {
        out[0] = in[0];
        out[1] = in[1];
        out[2] = in[2];
    }
}

// The same for four neighbouring columns (`next` bytes apart) into four rows.
void CopyColumnsToRows(const std::uint8_t* in, std::ptrdiff_t step, std::ptrdiff_t next,
                       std::uint8_t* __restrict out0, std::uint8_t* __restrict out1,
                       std::uint8_t* __restrict out2, std::uint8_t* __restrict out3, int count) {
    for (int k = 0; k < count; ++k, in += step) {
        std::memcpy(out0 + 3 * k, in, 3);
        std::memcpy(out1 + 3 * k, in + next, 3);
        std::memcpy(out2 + 3 * k, in + 2 * next, 3);
        std::memcpy(out3 + 3 * k, in + 3 * next, 3);
    }
}

} // namespace

void CImageTransform::SetTarget(CDibImage* target) {
    m_target = target;
    m_width = target != nullptr ? target->Width() : 0;
    m_height = target != nullptr ? target->Height() : 0;
    m_rowBytes = target != nullptr ? target->RowBytes() : 0;
}

bool CImageTransform::Ready() const {
    return m_target != nullptr && m_source != nullptr && m_target->IsValid() && m_source->IsValid() &&
           m_target->BitsPerPixel() == m_source->BitsPerPixel();
}

int CImageTransform::FlipHorizontal() {
    if (!Ready() || m_source->Width() != m_width || m_source->Height() != m_height) {
        return 0;
    }
    const std::uint8_t* src = m_source->Bits();
    std::uint8_t* dst = m_target->MutableBits();
    const bool trueColor = m_source->BitsPerPixel() == 24;
    return ops::ForEachStoredRow(m_height, 0, [&](int y, std::uint8_t*) {
        const std::size_t offset = static_cast<std::size_t>(y) * m_rowBytes;
        if (trueColor) {
            ReversePixels(src + offset, dst + offset, m_width);
        } else {
            ReverseBits(src + offset, dst + offset, m_width);
        }
    });
}

int CImageTransform::FlipVertical() {
    if (!Ready() || m_source->ImageBytes() != m_target->ImageBytes()) {
        return 0;
    }
    const std::uint8_t* src = m_source->Bits();
    std::uint8_t* dst = m_target->MutableBits();
    return ops::ForEachStoredRow(m_height, 0, [&](int i, std::uint8_t*) {
        std::memcpy(dst + static_cast<std::size_t>(m_height - 1 - i) * m_rowBytes,
                    src + static_cast<std::size_t>(i) * m_rowBytes, m_rowBytes);
    });
}

// Writes target(r, i) = source(column(r), row(i)) for a quarter turn, where
// `position(r, i)` gives that source column and row. 24-bit pictures go tile by
// tile so that the source columns are read from cache; masks go a column at a
// time.
template <class SourcePosition> int CImageTransform::QuarterTurn(const SourcePosition& position) {
    if (!Ready() || m_source->Width() != m_height || m_source->Height() != m_width) {
        return 0;
    }
    if (m_source->BitsPerPixel() != 24) {
        platform::HeapBlock column = platform::HeapBlock::Allocate(m_rowBytes);
        platform::HeapBlock reversed = platform::HeapBlock::Allocate(m_rowBytes);
        if (!column || !reversed) {
            return 0;
        }
        for (int r = 0; r < m_height; ++r) {
            const auto [x, firstRow] = position(r, 0);
            m_source->GetColumn(x, 0, m_width - 1, column.data());
            const bool bottomUp = firstRow != 0;
            if (bottomUp) {
                ReverseBits(column.data(), reversed.data(), m_width);
            }
            m_target->SetRow(r, bottomUp ? reversed.data() : column.data());
        }
        return 1;
    }
    // Target row r, pixel i is the source pixel at column x(r), source row y(i);
    // along a target row the source pointer moves one stored row per pixel.
    const std::uint8_t* src = m_source->Bits();
    const auto srcRowBytes = static_cast<std::ptrdiff_t>(m_source->RowBytes());
    const int srcHeight = m_source->Height();
    // Plain variables rather than structured bindings: the lambda below
    // captures them, which not every compiler we build with accepts.
    const std::pair<int, int> origin = position(0, 0);
    const std::pair<int, int> next = position(m_height > 1 ? 1 : 0, m_width > 1 ? 1 : 0);
    const int x0 = origin.first;
    const int y0 = origin.second;
    const int x1 = next.first;
    const int y1 = next.second;
    const int columnStep = m_height > 1 ? x1 - x0 : 0;
    // Stored rows run bottom-up, so a step down the picture is a step back.
    const std::ptrdiff_t storedStep = (m_width > 1 ? -(y1 - y0) : 0) * srcRowBytes;
    std::uint8_t* dst = m_target->MutableBits();
    const std::uint32_t rowBytes = m_rowBytes;
    const int width = m_width;
    const int height = m_height;
    const int tileRows = (height + kTile - 1) / kTile;
    return ops::ForEachStoredRow(tileRows, 0, [=](int tile, std::uint8_t*) {
        const int r0 = tile * kTile;
        const int r1 = std::min(r0 + kTile, height);
        for (int i0 = 0; i0 < width; i0 += kTile) {
            const int count = std::min(kTile, width - i0);
            const int firstStored = srcHeight - 1 - y0;
            const auto columnStart = [&](int r) {
                return src + (firstStored * srcRowBytes + i0 * storedStep) + 3 * (x0 + columnStep * r);
            };
            const auto rowStart = [&](int r) {
                return dst + static_cast<std::size_t>(height - 1 - r) * rowBytes + 3 * i0;
            };
            int r = r0;
            // Four target rows at a time read four neighbouring pixels of each
            // source row together.
            for (; r + 4 <= r1; r += 4) {
                CopyColumnsToRows(columnStart(r), storedStep, 3 * columnStep, rowStart(r), rowStart(r + 1),
                                  rowStart(r + 2), rowStart(r + 3), count);
            }
            for (; r < r1; ++r) {
                CopyColumnToRow(columnStart(r), storedStep, rowStart(r), count);
            }
        }
    });
}

int CImageTransform::RotateLeft() {
    const int lastColumn = m_height - 1;
    return QuarterTurn([lastColumn](int r, int i) { return std::pair<int, int>(lastColumn - r, i); });
}

int CImageTransform::RotateRight() {
    const int lastRow = m_width - 1;
    return QuarterTurn([lastRow](int r, int i) { return std::pair<int, int>(r, lastRow - i); });
}
