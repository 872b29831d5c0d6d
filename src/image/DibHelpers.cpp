#include "image/DibHelpers.h"

#include "image/CDibImage.h"
#include "platform/HeapBlock.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

#include <algorithm>
#include <cstring>

using platform::HeapBlock;

std::uint32_t DibRowBytes(int width, int bitsPerPixel) {
    return static_cast<std::uint32_t>(((width * bitsPerPixel + 31) >> 3) & ~3);
}

int DibColorCount(int bitsPerPixel) {
    return bitsPerPixel <= 8 ? 1 << bitsPerPixel : 0;
}

int DpiFromPelsPerMeter(std::int32_t pelsPerMeter) {
    return static_cast<std::int16_t>((static_cast<std::int64_t>(pelsPerMeter) + 1) * 254 / 10000);
}

std::int32_t PelsPerMeterFromDpi(int dpi) {
    return dpi * 10000 / 254;
}

void InitDibHeader(BitmapInfoHeader& header, int width, int height, int bitsPerPixel, int dpiX, int dpiY) {
    header = BitmapInfoHeader{};
    header.biSize = sizeof(BitmapInfoHeader);
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = static_cast<std::uint16_t>(bitsPerPixel);
    header.biCompression = 0;
    header.biSizeImage = static_cast<std::uint32_t>(height) * DibRowBytes(width, bitsPerPixel);
    header.biXPelsPerMeter = PelsPerMeterFromDpi(dpiX);
    header.biYPelsPerMeter = PelsPerMeterFromDpi(dpiY);
    header.biClrUsed = static_cast<std::uint32_t>(DibColorCount(bitsPerPixel));
    header.biClrImportant = 0;
}

void FillRow(std::uint8_t* row, ColorWord color, int width, int pixelFormat) {
    if (width <= 0) {
        return;
    }
    if (pixelFormat == kFillFormatMask) {
        std::memset(row, color != 0 ? 0xFF : 0x00, static_cast<std::size_t>((width + 7) / 8));
        return;
    }
    if (pixelFormat != kFillFormatTrueColor) {
        return;
    }
    row[0] = static_cast<std::uint8_t>(BlueOf(color));
    row[1] = static_cast<std::uint8_t>(GreenOf(color));
    row[2] = static_cast<std::uint8_t>(RedOf(color));
    // Double the filled part until the row is full: a few block copies per row.
    const std::size_t total = static_cast<std::size_t>(width) * 3;
    std::size_t filled = 3;
    while (filled < total) {
        const std::size_t chunk = filled < total - filled ? filled : total - filled;
        std::memcpy(row + filled, row, chunk);
        filled += chunk;
    }
}

namespace {

void SetEntry(RgbQuad& entry, int red, int green, int blue) {
    entry.red = static_cast<std::uint8_t>(red);
    entry.green = static_cast<std::uint8_t>(green);
    entry.blue = static_cast<std::uint8_t>(blue);
    entry.reserved = 0;
}

bool IsCorner(int c) {
    return c == 0 || c == 255;
}

void BuildFixedPalette(RgbQuad* table) {
    std::fill(table, table + 256, RgbQuad{});
    int n = 0;
    for (int i = 0; i < 8; ++i) {
        SetEntry(table[n++], (i & 4) ? 255 : 0, (i & 2) ? 255 : 0, (i & 1) ? 255 : 0);
    }
    for (int r = 0; r <= 255; r += 51) {
        for (int g = 0; g <= 255; g += 51) {
            for (int b = 0; b <= 255; b += 51) {
                const bool corner = IsCorner(r) && IsCorner(g) && IsCorner(b);
                const bool gray = r == g && g == b;
                if (!corner && !gray) {
                    SetEntry(table[n++], r, g, b);
                }
            }
        }
    }
    for (int v = 64; v <= 192; v += 32) {
        SetEntry(table[n++], v, 0, 0);
        SetEntry(table[n++], 0, v, 0);
        SetEntry(table[n++], 0, 0, v);
        SetEntry(table[n++], 0, v, v);
        SetEntry(table[n++], v, 0, v);
        SetEntry(table[n++], v, v, 0);
    }
    for (int v = 33; n < 248; v += 33) {
        SetEntry(table[n++], v, v, v);
    }
    SetEntry(table[248], 0, 0, 128);
    SetEntry(table[249], 0, 128, 0);
    SetEntry(table[250], 0, 128, 128);
    SetEntry(table[251], 128, 0, 0);
    SetEntry(table[252], 128, 0, 128);
    SetEntry(table[253], 128, 128, 0);
    SetEntry(table[254], 128, 128, 128);
    SetEntry(table[255], 192, 192, 192);
}

} // namespace

void BuildPalette(RgbQuad* table, int kind) {
    if (kind == 0) {
        SetEntry(table[0], 0, 0, 0);
        SetEntry(table[1], 255, 255, 255);
    } else if (kind == 2) {
        BuildFixedPalette(table);
    }
}

std::unique_ptr<CDibImage> CreateMask(int width, int height, bool empty) {
    BitmapInfoHeader header;
    InitDibHeader(header, width, height, 1, 72, 72);
    RgbQuad palette[2];
    BuildPalette(palette, 0);
    auto mask = std::make_unique<CDibImage>();
    if (!mask->Create(&header, palette)) {
        return nullptr;
    }
    if (!empty) {
        HeapBlock row = HeapBlock::Allocate(mask->RowBytes());
        if (!row) {
            return nullptr;
        }
        std::memset(row.data(), 0xFF, static_cast<std::size_t>(width / 8));
        if (width % 8 != 0) {
            row.data()[width / 8] = static_cast<std::uint8_t>(0xFF << (8 - width % 8));
        }
        for (int y = 0; y < height; ++y) {
            mask->SetRow(y, row.data());
        }
    }
    return mask;
}

std::unique_ptr<CDibImage> DuplicateImage(const CDibImage* image) {
    if (image == nullptr) {
        return nullptr;
    }
    auto copy = std::make_unique<CDibImage>();
    if (!copy->CopyFrom(*image)) {
        return nullptr;
    }
    return copy;
}

std::unique_ptr<CDibImage> CopyRectToNewImage(const CDibImage& image, int x0, int y0, int x1, int y1) {
    const int width = x1 - x0 + 1;
    const int height = y1 - y0 + 1;
    BitmapInfoHeader header;
    InitDibHeader(header, width, height, image.BitsPerPixel(), 72, 72);
    auto result = std::make_unique<CDibImage>();
    HeapBlock span;
    if (result->Create(&header, image.Palette())) {
        span = HeapBlock::Allocate(result->RowBytes() + 4);
    }
    if (!span) {
        platform::ShowMessage(platform::IDS_DISK_SPACE_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
        return nullptr;
    }
    for (int row = 0; row < height; ++row) {
        image.GetSpan(x0, x1, y0 + row, span.data());
        result->PutSpan(0, width - 1, row, span.data());
    }
    return result;
}

bool FindSetBitsBounds(const CDibImage& mask, ImageRect& bounds) {
    const int width = mask.Width();
    const int usedBytes = (width + 7) / 8;
    const auto lastByteMask = static_cast<std::uint8_t>(width % 8 == 0 ? 0xFF : 0xFF << (8 - width % 8));
    HeapBlock row = HeapBlock::Allocate(mask.RowBytes());
    if (!row || usedBytes == 0) {
        return false;
    }
    bool found = false;
    for (int y = 0; y < mask.Height(); ++y) {
        mask.GetRow(y, row.data());
        row.data()[usedBytes - 1] &= lastByteMask;
        int first = 0;
        while (first < usedBytes && row.data()[first] == 0) {
            ++first;
        }
        if (first == usedBytes) {
            continue;
        }
        int last = usedBytes - 1;
        while (row.data()[last] == 0) {
            --last;
        }
        const int left = first * 8 + __builtin_clz(row.data()[first]) - 24;
        const int right = last * 8 + 7 - __builtin_ctz(row.data()[last]);
        if (!found) {
            bounds = ImageRect{left, y, right, y};
            found = true;
        } else {
            bounds.left = left < bounds.left ? left : bounds.left;
            bounds.right = right > bounds.right ? right : bounds.right;
            bounds.bottom = y;
        }
    }
    return found;
}
