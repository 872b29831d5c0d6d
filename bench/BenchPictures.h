#pragma once

#include "image/CDibImage.h"
#include "image/DibHelpers.h"

#include <algorithm>
#include <cstdint>
#include <memory>

// Pictures the benchmarks work on.
inline std::unique_ptr<CDibImage> NewPicture(int width, int height, int bitsPerPixel = 24) {
    BitmapInfoHeader header;
    InitDibHeader(header, width, height, bitsPerPixel, 72, 72);
    auto image = std::make_unique<CDibImage>();
    image->Create(&header, nullptr);
    return image;
}

// Smooth gradients with noise on top, like a photograph, so that edge and
// speckle tests take both of their branches.
inline std::unique_ptr<CDibImage> NewPhoto(int width, int height) {
    auto image = NewPicture(width, height);
    std::uint8_t* bits = image->MutableBits();
    std::uint32_t seed = 12345;
    for (int y = 0; y < height; ++y) {
        std::uint8_t* row = bits + static_cast<std::size_t>(y) * image->RowBytes();
        for (int x = 0; x < width; ++x) {
            seed = seed * 1664525u + 1013904223u;
            const int noise = static_cast<int>(seed >> 26) - 32;
            row[3 * x] = static_cast<std::uint8_t>(std::clamp(x / 16 + noise, 0, 255));
            row[3 * x + 1] = static_cast<std::uint8_t>(std::clamp(y / 12 + noise, 0, 255));
            row[3 * x + 2] = static_cast<std::uint8_t>(std::clamp((x + y) / 28 - noise, 0, 255));
        }
    }
    return image;
}
