#pragma once

#include "image/SavedPixels.h"
#include "platform/HeapBlock.h"

#include <memory>
#include <vector>

// The tiles in which two images of the same size differ, holding the first
// image's bytes: what an undo step needs of a whole copy once its command has
// finished. Tiles are kTileSize pixels square (smaller at the right and
// bottom edges).
class TilePixels final : public SavedPixels {
public:
    static constexpr int kTileSize = 64;

    // The differing tiles of `saved` against `current`; null when the images
    // differ in size or depth, when most of the picture differs (a whole copy
    // is then as good), or when memory ran out.
    static std::unique_ptr<TilePixels> Difference(const CDibImage& saved, const CDibImage& current);

    void SwapWith(CDibImage& image) override;
    std::size_t Bytes() const override;
    int TileCount() const { return static_cast<int>(m_tiles.size()); }

private:
    struct Tile {
        int firstByte; // byte column in the row
        int byteCount;
        int top;
        int rows;
        std::size_t offset; // into m_bytes
    };
    std::vector<Tile> m_tiles;
    platform::HeapBlock m_bytes;
};
