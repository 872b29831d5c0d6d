#include "ops/CImageTransform.h"

#include "image/CDibImage.h"
#include "ops/FilterMath.h"
#include "ops/QuarterTurnStrip.h"
#include "ops/RowPasses.h"

#include <algorithm>
#include <cstring>

namespace {

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
// `position(r, i)` gives that source column and row. 24-bit pictures go in
// strips of target rows, each reading every source row once; masks go a
// column at a time.
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
    // The target pixel i that reads the source's last stored row.
    const int firstStored = srcHeight - 1 - y0;
    const int lastStoredIndex =
        storedStep == 0 ? 0 : static_cast<int>((srcHeight - 1 - firstStored) * srcRowBytes / storedStep);
    const int strips = (height + ops::kTurnStrip - 1) / ops::kTurnStrip;
    return ops::ForEachStoredRow(strips, 0, [=](int strip, std::uint8_t*) {
        const int r0 = strip * ops::kTurnStrip;
        const int count = std::min(ops::kTurnStrip, height - r0);
        std::uint8_t* rows[ops::kTurnStrip];
        for (int j = 0; j < count; ++j) {
            rows[j] = dst + static_cast<std::size_t>(height - 1 - (r0 + j)) * rowBytes;
        }
        const std::uint8_t* first = src + firstStored * srcRowBytes + 3 * (x0 + columnStep * r0);
        ops::TurnStrip(first, storedStep, columnStep, rows, count, width, lastStoredIndex);
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
