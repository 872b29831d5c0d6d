#include "image/TilePixels.h"

#include "image/CDibImage.h"

#include <algorithm>
#include <cstring>

namespace {

struct TileGrid {
    int tileBytes; // bytes of one tile row
    int columns;
    int bands;
    int rowBytes;
    int height;

    explicit TileGrid(const CDibImage& image)
        : tileBytes(std::max(1, TilePixels::kTileSize * image.BitsPerPixel() / 8)),
          columns((static_cast<int>(image.RowBytes()) + tileBytes - 1) / tileBytes),
          bands((image.Height() + TilePixels::kTileSize - 1) / TilePixels::kTileSize),
          rowBytes(static_cast<int>(image.RowBytes())), height(image.Height()) {}

    int FirstByte(int column) const { return column * tileBytes; }
    int ByteCount(int column) const { return std::min(tileBytes, rowBytes - column * tileBytes); }
    int Top(int band) const { return band * TilePixels::kTileSize; }
    int Rows(int band) const { return std::min(TilePixels::kTileSize, height - band * TilePixels::kTileSize); }
};

bool SameShape(const CDibImage& a, const CDibImage& b) {
    return a.Width() == b.Width() && a.Height() == b.Height() && a.BitsPerPixel() == b.BitsPerPixel() &&
           a.RowBytes() == b.RowBytes();
}

// Marks the tiles of one band in which the two images differ.
void MarkBand(const CDibImage& saved, const CDibImage& current, const TileGrid& grid, int band,
              std::vector<char>& differs) {
    const int top = grid.Top(band);
    for (int y = top; y < top + grid.Rows(band); ++y) {
        const std::uint8_t* a = saved.RowData(y);
        const std::uint8_t* b = current.RowData(y);
        for (int column = 0; column < grid.columns; ++column) {
            char& mark = differs[static_cast<std::size_t>(column)];
            const int first = grid.FirstByte(column);
            if (!mark && std::memcmp(a + first, b + first, static_cast<std::size_t>(grid.ByteCount(column))) != 0) {
                mark = 1;
            }
        }
    }
}

} // namespace

std::unique_ptr<TilePixels> TilePixels::Difference(const CDibImage& saved, const CDibImage& current) {
    if (!SameShape(saved, current)) {
        return nullptr;
    }
    const TileGrid grid(saved);
    auto result = std::unique_ptr<TilePixels>(new TilePixels);
    std::size_t total = 0;
    std::vector<char> differs(static_cast<std::size_t>(grid.columns));
    for (int band = 0; band < grid.bands; ++band) {
        std::fill(differs.begin(), differs.end(), 0);
        MarkBand(saved, current, grid, band, differs);
        for (int column = 0; column < grid.columns; ++column) {
            if (differs[static_cast<std::size_t>(column)]) {
                const int count = grid.ByteCount(column);
                const int rows = grid.Rows(band);
                result->m_tiles.push_back(Tile{grid.FirstByte(column), count, grid.Top(band), rows, total});
                total += static_cast<std::size_t>(count) * rows;
            }
        }
    }
    if (total * 2 > saved.ImageBytes()) {
        return nullptr;
    }
    result->m_bytes = platform::HeapBlock::AllocateForOverwrite(std::max<std::size_t>(total, 1));
    if (!result->m_bytes) {
        return nullptr;
    }
    for (const Tile& tile : result->m_tiles) {
        std::uint8_t* out = result->m_bytes.data() + tile.offset;
        for (int y = tile.top; y < tile.top + tile.rows; ++y) {
            std::memcpy(out, saved.RowData(y) + tile.firstByte, static_cast<std::size_t>(tile.byteCount));
            out += tile.byteCount;
        }
    }
    result->m_tiles.shrink_to_fit();
    return result;
}

void TilePixels::SwapWith(CDibImage& image) {
    for (const Tile& tile : m_tiles) {
        std::uint8_t* saved = m_bytes.data() + tile.offset;
        for (int y = tile.top; y < tile.top + tile.rows; ++y) {
            std::uint8_t* row = image.RowData(y) + tile.firstByte;
            std::swap_ranges(saved, saved + tile.byteCount, row);
            saved += tile.byteCount;
        }
    }
    image.MutableBits();
}

std::size_t TilePixels::Bytes() const {
    return sizeof(*this) + m_tiles.capacity() * sizeof(Tile) + m_bytes.size();
}
