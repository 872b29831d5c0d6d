#pragma once

#include <cstdint>

// Plain data of the device-independent bitmap layout that pictures, masks, the
// clipboard and the BMP files share. All fields are little-endian on disk and in
// memory (the program only runs on little-endian machines).

struct BitmapInfoHeader {
    std::uint32_t biSize = 40;
    std::int32_t biWidth = 0;
    std::int32_t biHeight = 0;
    std::uint16_t biPlanes = 1;
    std::uint16_t biBitCount = 0;
    std::uint32_t biCompression = 0;
    std::uint32_t biSizeImage = 0;
    std::int32_t biXPelsPerMeter = 0;
    std::int32_t biYPelsPerMeter = 0;
    std::uint32_t biClrUsed = 0;
    std::uint32_t biClrImportant = 0;
};
static_assert(sizeof(BitmapInfoHeader) == 40, "the bitmap header is 40 bytes");

// One colour-table entry: blue, green, red, reserved.
struct RgbQuad {
    std::uint8_t blue = 0;
    std::uint8_t green = 0;
    std::uint8_t red = 0;
    std::uint8_t reserved = 0;
};
static_assert(sizeof(RgbQuad) == 4, "a colour-table entry is 4 bytes");

// The largest width or height of a picture the program makes: new pictures,
// pasted and rescaled ones, text. The view's zoom keeps to the same bound.
constexpr int kLargestPictureSide = 30000;

// A colour as one number: 0x00BBGGRR, red in the low byte.
using ColorWord = std::uint32_t;

constexpr ColorWord MakeColorWord(int red, int green, int blue) {
    return static_cast<ColorWord>((red & 0xFF) | ((green & 0xFF) << 8) | ((blue & 0xFF) << 16));
}
constexpr int RedOf(ColorWord c) {
    return static_cast<int>(c & 0xFF);
}
constexpr int GreenOf(ColorWord c) {
    return static_cast<int>((c >> 8) & 0xFF);
}
constexpr int BlueOf(ColorWord c) {
    return static_cast<int>((c >> 16) & 0xFF);
}

// A rectangle in image coordinates. Whether right and bottom are inclusive is
// stated by each operation that uses it.
struct ImageRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool operator==(const ImageRect&) const = default;
};
