#pragma once

#include "image/DibTypes.h"

#include <cstdint>
#include <memory>

class CDibImage;

// Free helpers that go with the image type.

// Bytes of one stored row: ((width x bpp + 31) / 32) x 4.
std::uint32_t DibRowBytes(int width, int bitsPerPixel);
// Colour-table entries: 2^bpp up to 8 bits, else 0.
int DibColorCount(int bitsPerPixel);
// Resolution conversions. Pixels per metre to dpi adds 1 first, so that 2834
// comes out as 72.
int DpiFromPelsPerMeter(std::int32_t pelsPerMeter);
std::int32_t PelsPerMeterFromDpi(int dpi);
void InitDibHeader(BitmapInfoHeader& header, int width, int height, int bitsPerPixel, int dpiX, int dpiY);

// Row-fill codes (`pixelFormat`): 0 writes mask bytes, 4 writes 24-bit pixels.
constexpr int kFillFormatMask = 0;
constexpr int kFillFormatTrueColor = 4;
void FillRow(std::uint8_t* row, ColorWord color, int width, int pixelFormat);

// Palette kinds: 0 black and white, 2 the fixed 256-colour table.
void BuildPalette(RgbQuad* table, int kind);

// A new 1-bit mask at 72 dpi: all clear when `empty`, else every pixel set.
std::unique_ptr<CDibImage> CreateMask(int width, int height, bool empty);
// A deep copy, or null (nothing left allocated) on failure or for a null image.
std::unique_ptr<CDibImage> DuplicateImage(const CDibImage* image);
// The inclusive rectangle as a new image of the same depth at 72 dpi; shows
// the "free disk space" message and returns null when it cannot be made.
std::unique_ptr<CDibImage> CopyRectToNewImage(const CDibImage& image, int x0, int y0, int x1, int y1);

// Smallest inclusive rectangle holding every set pixel of a mask; false when
// no pixel is set.
bool FindSetBitsBounds(const CDibImage& mask, ImageRect& bounds);
