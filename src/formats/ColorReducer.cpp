#include "formats/ColorReducer.h"

#include "formats/WuQuantizer.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "platform/HeapBlock.h"

#include <algorithm>
#include <cstring>

using platform::HeapBlock;

namespace {
constexpr int kColors = 256;

// Up to 256 distinct colours with their palette index, in an open-addressing
// table keyed by the 24-bit pixel value.
class ExactColorTable {
public:
    static constexpr int kSlots = 1024;

    // False as soon as a 257th colour turns up.
    bool Collect(const CDibImage& picture, std::uint8_t* row) {
        for (int y = 0; y < picture.Height(); ++y) {
            picture.GetRow(y, row);
            for (int x = 0; x < picture.Width(); ++x) {
                if (IndexOf(Key(row + 3 * x), true) < 0) {
                    return false;
                }
            }
        }
        return true;
    }
    // The index of a colour, adding it when `add` is set; -1 when full.
    int IndexOf(std::uint32_t key, bool add) {
        std::uint32_t slot = (key * 2654435761u) >> 22;
        while (m_keys[slot] != 0 && m_keys[slot] != key + 1) {
            slot = (slot + 1) & (kSlots - 1);
        }
        if (m_keys[slot] == 0) {
            if (!add || m_count == kColors) {
                return -1;
            }
            m_keys[slot] = key + 1;
            m_index[slot] = static_cast<std::uint8_t>(m_count++);
        }
        return m_index[slot];
    }
    void FillPalette(RgbQuad* palette) const {
        for (int slot = 0; slot < kSlots; ++slot) {
            if (m_keys[slot] != 0) {
                const std::uint32_t key = m_keys[slot] - 1;
                palette[m_index[slot]] =
                    RgbQuad{static_cast<std::uint8_t>(key), static_cast<std::uint8_t>(key >> 8),
                            static_cast<std::uint8_t>(key >> 16), 0};
            }
        }
    }
    static std::uint32_t Key(const std::uint8_t* bgr) {
        return static_cast<std::uint32_t>(bgr[0]) | (static_cast<std::uint32_t>(bgr[1]) << 8) |
               (static_cast<std::uint32_t>(bgr[2]) << 16);
    }

private:
    std::uint32_t m_keys[kSlots] = {};
    std::uint8_t m_index[kSlots] = {};
    int m_count = 0;
};

// Nearest palette entry of a colour, remembered per 6-bit-per-channel cell.
class NearestColorCache {
public:
    NearestColorCache(const RgbQuad* palette, int count)
        : m_palette(palette), m_count(count),
          m_cells(HeapBlock::Allocate((1u << 18) * sizeof(std::uint16_t))) {}
    bool IsValid() const { return static_cast<bool>(m_cells); }

    int Nearest(int b, int g, int r) {
        auto* cells = reinterpret_cast<std::uint16_t*>(m_cells.data());
        const std::uint32_t cell = (static_cast<std::uint32_t>(r >> 2) << 12) | ((g >> 2) << 6) | (b >> 2);
        if (cells[cell] == 0) {
            cells[cell] = static_cast<std::uint16_t>(Search(b | 2, g | 2, r | 2) + 1);
        }
        return cells[cell] - 1;
    }

private:
    int Search(int b, int g, int r) const {
        int best = 0;
        int bestDistance = 1 << 30;
        for (int i = 0; i < m_count; ++i) {
            const int db = b - m_palette[i].blue;
            const int dg = g - m_palette[i].green;
            const int dr = r - m_palette[i].red;
            const int distance = db * db + dg * dg + dr * dr;
            if (distance < bestDistance) {
                bestDistance = distance;
                best = i;
            }
        }
        return best;
    }

    const RgbQuad* m_palette;
    int m_count;
    HeapBlock m_cells;
};

std::unique_ptr<CDibImage> CreateIndexedCopy(const CDibImage& picture, const RgbQuad* palette) {
    BitmapInfoHeader header;
    InitDibHeader(header, picture.Width(), picture.Height(), 8, picture.DpiX(), picture.DpiY());
    auto copy = std::make_unique<CDibImage>();
    return copy->Create(&header, palette) ? std::move(copy) : nullptr;
}

void MapExactly(const CDibImage& picture, ExactColorTable& table, std::uint8_t* row, std::uint8_t* indices,
                CDibImage& out) {
    for (int y = 0; y < picture.Height(); ++y) {
        picture.GetRow(y, row);
        for (int x = 0; x < picture.Width(); ++x) {
            indices[x] = static_cast<std::uint8_t>(table.IndexOf(ExactColorTable::Key(row + 3 * x), false));
        }
        out.SetRow(y, indices);
    }
}

// Floyd-Steinberg with errors kept in sixteenths, two rows of them with a
// guard pixel at each end; even rows run left to right, odd rows back.
bool Diffuse(const CDibImage& picture, const RgbQuad* palette, int count, std::uint8_t* row,
             std::uint8_t* indices, CDibImage& out) {
    NearestColorCache nearest(palette, count);
    const int width = picture.Width();
    const std::size_t errorInts = (static_cast<std::size_t>(width) + 2) * 3;
    HeapBlock errors = HeapBlock::Allocate(2 * errorInts * sizeof(int));
    if (!nearest.IsValid() || !errors) {
        return false;
    }
    for (int y = 0; y < picture.Height(); ++y) {
        int* current = reinterpret_cast<int*>(errors.data()) + (y & 1) * errorInts;
        int* below = reinterpret_cast<int*>(errors.data()) + ((y + 1) & 1) * errorInts;
        std::memset(below, 0, errorInts * sizeof(int));
        picture.GetRow(y, row);
        const int step = (y & 1) ? -1 : 1;
        for (int i = 0, x = step > 0 ? 0 : width - 1; i < width; ++i, x += step) {
            int value[3];
            int* here = current + 3 * (x + 1);
            for (int c = 0; c < 3; ++c) {
                value[c] = std::clamp(row[3 * x + c] + ((here[c] + 8) >> 4), 0, 255);
            }
            const int index = nearest.Nearest(value[0], value[1], value[2]);
            indices[x] = static_cast<std::uint8_t>(index);
            const int chosen[3] = {palette[index].blue, palette[index].green, palette[index].red};
            int* ahead = here + 3 * step;
            int* under = below + 3 * (x + 1);
            for (int c = 0; c < 3; ++c) {
                const int error = value[c] - chosen[c];
                ahead[c] += error * 7;
                under[c - 3 * step] += error * 3;
                under[c] += error * 5;
                under[c + 3 * step] += error;
            }
        }
        out.SetRow(y, indices);
    }
    return true;
}
} // namespace

std::unique_ptr<CDibImage> ColorReducer::Reduce(const CDibImage& picture) {
    if (picture.BitsPerPixel() != 24) {
        return nullptr;
    }
    HeapBlock row = HeapBlock::Allocate(picture.RowBytes());
    HeapBlock indices = HeapBlock::Allocate(DibRowBytes(picture.Width(), 8));
    ExactColorTable exact;
    if (!row || !indices) {
        return nullptr;
    }
    RgbQuad palette[kColors] = {};
    if (exact.Collect(picture, row.data())) {
        exact.FillPalette(palette);
        auto out = CreateIndexedCopy(picture, palette);
        if (out) {
            MapExactly(picture, exact, row.data(), indices.data(), *out);
        }
        return out;
    }
    WuQuantizer quantizer;
    if (!quantizer.IsValid() || !quantizer.AddPicture(picture)) {
        return nullptr;
    }
    const int count = quantizer.BuildPalette(palette, kColors);
    auto out = CreateIndexedCopy(picture, palette);
    if (!out || !Diffuse(picture, palette, count, row.data(), indices.data(), *out)) {
        return nullptr;
    }
    return out;
}
