#pragma once

#include <cstdint>

// Compressed formats (RLE bitmaps, JPEG) can declare a picture far larger
// than their bytes could plausibly describe: a few hundred bytes that decode
// to gigapixels of one colour. Decoding such a file would cost seconds and
// gigabytes for nothing anyone drew, so a file may declare at most a fixed
// allowance (about a second of decoding) plus a number of pixels per byte of
// the file (about a second per megabyte). Photos and scans stay far below
// it; only flat synthetic pictures larger than the allowance reach it.
namespace decode_budget {

constexpr std::uint64_t kFreePixels = std::uint64_t{32} << 20;
constexpr std::uint64_t kPixelsPerByte = 32;

inline bool IsPlausible(std::uint64_t width, std::uint64_t height, std::uint64_t fileBytes) {
    return width * height <= kFreePixels + fileBytes * kPixelsPerByte;
}

} // namespace decode_budget
