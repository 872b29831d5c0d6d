#pragma once

#include "image/CDibImage.h"
#include "image/DibHelpers.h"

#include <memory>

// Colour words (0x00BBGGRR) the tests paint and compare with.
constexpr ColorWord kBlack = 0x00000000;
constexpr ColorWord kWhite = 0x00FFFFFF;
constexpr ColorWord kRed = 0x000000FF;
constexpr ColorWord kGreen = 0x0000FF00;
constexpr ColorWord kBlue = 0x00FF0000;

// Small pictures and masks for tests.
inline std::unique_ptr<CDibImage> MakeImage(int width, int height, int bitsPerPixel = 24, int dpi = 72) {
    BitmapInfoHeader header;
    InitDibHeader(header, width, height, bitsPerPixel, dpi, dpi);
    RgbQuad palette[2];
    BuildPalette(palette, 0);
    auto image = std::make_unique<CDibImage>();
    return image->Create(&header, palette) ? std::move(image) : nullptr;
}

// A picture whose every pixel has a colour of its own, so that any misplaced
// copy shows.
inline std::unique_ptr<CDibImage> MakeGradientImage(int width, int height) {
    auto image = MakeImage(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image->SetPixel(x, y, MakeColorWord(x * 7 + 1, y * 11 + 2, (x + y) * 3 + 3));
        }
    }
    return image;
}

// A picture of uneven colours from a fixed pseudo-random sequence: a blur
// changes it, and a misplaced copy shows.
inline std::unique_ptr<CDibImage> MakeNoiseImage(int width, int height, unsigned seed) {
    auto image = MakeImage(width, height);
    unsigned state = seed;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            state = state * 1103515245u + 12345u;
            image->SetPixel(x, y, (state >> 8) & 0xFFFFFF);
        }
    }
    return image;
}

inline bool SamePixels(const CDibImage& a, const CDibImage& b) {
    if (a.Width() != b.Width() || a.Height() != b.Height() || a.BitsPerPixel() != b.BitsPerPixel()) {
        return false;
    }
    for (int y = 0; y < a.Height(); ++y) {
        for (int x = 0; x < a.Width(); ++x) {
            const bool same = a.BitsPerPixel() == 1 ? a.GetBit(x, y) == b.GetBit(x, y)
                                                    : a.GetPixel(x, y) == b.GetPixel(x, y);
            if (!same) {
                return false;
            }
        }
    }
    return true;
}
