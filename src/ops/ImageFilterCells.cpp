// Mosaic and Average: n x n cell means over 16-bit column sums, with the
// 16-bit wrap of the cell sum that large bright cells run into.
#include "image/CDibImage.h"
#include "ops/CImageFilter.h"
#include "ops/FilterMath.h"
#include "ops/RowPasses.h"
#include "platform/HeapBlock.h"

#include <algorithm>
#include <cstring>

namespace {

TAMRICK_VECTOR_CLONES void AddRow(const std::uint8_t* __restrict row, std::int16_t* __restrict sums,
                                  int count) {
    for (int j = 0; j < count; ++j) {
        sums[j] = static_cast<std::int16_t>(sums[j] + row[j]);
    }
}

// Means of 4 x 4 cells from their sums, which never wrap.
TAMRICK_VECTOR_CLONES void MeanOfWindows(const std::int16_t* __restrict windows, std::uint8_t* __restrict row,
                                         int count) {
    for (int j = 0; j < count; ++j) {
        row[j] = static_cast<std::uint8_t>(windows[j] >> 4);
    }
}

// Column sums (one per byte) of the picture rows top..top+n-1 counted from the
// top; a row beyond the last reads the last row again.
void SumRowsIntoColumns(const CDibImage& src, int top, int n, std::int16_t* sums, int pixelBytes) {
    const std::uint8_t* bits = src.Bits();
    const int lastRow = src.Height() - 1;
    std::fill(sums, sums + pixelBytes, std::int16_t{0});
    for (int i = 0; i < n; ++i) {
        const int y = std::min(top + i, lastRow);
        const std::uint8_t* row = bits + static_cast<std::size_t>(lastRow - y) * src.RowBytes();
        AddRow(row, sums, pixelBytes);
    }
}

// Column sums of one band with the last column repeated n - 1 times beyond
// the row's end, then windows[j] = the sum of the n columns from byte j's
// column on, for every j of the row. Additions wrap at 16 bits, as the cell
// sum does.
TAMRICK_VECTOR_CLONES void SumWindows(std::int16_t* __restrict sums, std::int16_t* __restrict windows,
                                      int pixelBytes, int n) {
    for (int j = pixelBytes; j < pixelBytes + 3 * (n - 1); ++j) {
        sums[j] = sums[j - 3];
    }
    std::memcpy(windows, sums, static_cast<std::size_t>(pixelBytes) * sizeof(std::int16_t));
    for (int i = 1; i < n; ++i) {
        const std::int16_t* shifted = sums + 3 * i;
        for (int j = 0; j < pixelBytes; ++j) {
            windows[j] = static_cast<std::int16_t>(windows[j] + shifted[j]);
        }
    }
}

// The low byte of the truncated quotient of every 16-bit cell sum by the
// cell's area n x n, indexed by the sum's 16 bits.
platform::HeapBlock CellMeans(int n) {
    platform::HeapBlock block = platform::HeapBlock::AllocateForOverwrite(65536);
    if (block) {
        const ops::SmallDivisor area(n * n);
        for (int sum = -32768; sum <= 32767; ++sum) {
            block.data()[static_cast<std::uint16_t>(sum)] = static_cast<std::uint8_t>(area.Divide(sum));
        }
    }
    return block;
}

} // namespace

std::uint8_t* CImageFilter::StoredRow(std::uint8_t* bits, int top) const {
    return bits + static_cast<std::size_t>(m_height - 1 - top) * m_rowBytes;
}

int CImageFilter::Mosaic(int cellSize) {
    if (!Ready() || cellSize < 1) {
        return 1;
    }
    const int n = cellSize;
    const int pixelBytes = 3 * m_width;
    const int bands = (m_height + n - 1) / n;
    std::uint8_t* dst = m_dst->MutableBits();
    const std::size_t sumBytes = static_cast<std::size_t>(pixelBytes + 3 * n) * sizeof(std::int16_t);
    const platform::HeapBlock means = CellMeans(n);
    if (!means) {
        return 0;
    }
    return ops::ForEachStoredRow(bands, 2 * sumBytes + m_rowBytes, [&](int band, std::uint8_t* work) {
        auto* sums = reinterpret_cast<std::int16_t*>(work);
        auto* windows = reinterpret_cast<std::int16_t*>(work + sumBytes);
        std::uint8_t* row = work + 2 * sumBytes;
        const int top = band * n;
        SumRowsIntoColumns(*m_src, top, n, sums, pixelBytes);
        SumWindows(sums, windows, pixelBytes, n);
        for (int x = 0; x < m_width; x += n) {
            const std::uint8_t mean[3] = {means.data()[static_cast<std::uint16_t>(windows[3 * x])],
                                          means.data()[static_cast<std::uint16_t>(windows[3 * x + 1])],
                                          means.data()[static_cast<std::uint16_t>(windows[3 * x + 2])]};
            const int end = std::min(x + n, m_width);
            for (int i = x; i < end; ++i) {
                row[3 * i] = mean[0];
                row[3 * i + 1] = mean[1];
                row[3 * i + 2] = mean[2];
            }
        }
        for (int y = top; y < std::min(top + n, m_height); ++y) {
            std::memcpy(StoredRow(dst, y), row, m_rowBytes);
        }
    });
}

int CImageFilter::Average(int cellSize) {
    if (!Ready() || cellSize < 1) {
        return 1;
    }
    const int n = cellSize;
    const int pixelBytes = 3 * m_width;
    const std::size_t sumBytes = static_cast<std::size_t>(pixelBytes + 3 * n) * sizeof(std::int16_t);
    std::uint8_t* dst = m_dst->MutableBits();
    const platform::HeapBlock means = CellMeans(n);
    if (!means) {
        return 0;
    }
    return ops::ForEachStoredRow(m_height, 2 * sumBytes + m_rowBytes, [&](int y, std::uint8_t* work) {
        auto* sums = reinterpret_cast<std::int16_t*>(work);
        auto* windows = reinterpret_cast<std::int16_t*>(work + sumBytes);
        std::uint8_t* row = work + 2 * sumBytes;
        SumRowsIntoColumns(*m_src, y, n, sums, pixelBytes);
        SumWindows(sums, windows, pixelBytes, n);
        if (n == 4) {
            // The command's fixed 4 x 4: no wrap is possible (16 x 255 fits),
            // so the quotient is a shift the compiler vectorises.
            MeanOfWindows(windows, row, pixelBytes);
        } else {
            for (int j = 0; j < pixelBytes; ++j) {
                row[j] = means.data()[static_cast<std::uint16_t>(windows[j])];
            }
        }
        std::memcpy(StoredRow(dst, y), row, m_rowBytes);
    });
}
