#pragma once

#include <algorithm>
#include <cstdint>

// Compressed formats (RLE bitmaps, JPEG) can declare a picture far larger
// than their bytes could plausibly describe: a few hundred bytes that decode
// to gigapixels of one colour. Decoding such a file would cost seconds and
// gigabytes for nothing anyone drew, so a file may declare at most a fixed
// allowance (about a second of decoding) plus a number of pixels per byte of
// the file (about a second per megabyte). Photos and scans stay far below
// it; only flat synthetic pictures larger than the allowance reach it.
//
// A format whose writers never pack more than so many pixels into a byte
// also shrinks the fixed allowance of a tiny file to that density, so that
// a file of a few hundred bytes costs a few milliseconds at most.
namespace decode_budget {

constexpr std::uint64_t kFreePixels = std::uint64_t{32} << 20;
constexpr std::uint64_t kPixelsPerByte = 32;
constexpr std::uint64_t kAnyDensity = kFreePixels;

// RLE bitmaps: a run of at most 255 pixels takes 2 bytes and common writers
// end every row with a 2-byte code, so their files hold at most about 128
// pixels a byte; 8 times that leaves room for writers that skip rows.
constexpr std::uint64_t kRunLengthDensity = 1024;

inline bool IsPlausible(std::uint64_t width, std::uint64_t height, std::uint64_t fileBytes,
                        std::uint64_t densestPixelsPerByte = kAnyDensity) {
    const std::uint64_t allowance = std::min(kFreePixels, std::min(fileBytes, kFreePixels) * densestPixelsPerByte);
    return width * height <= allowance + fileBytes * kPixelsPerByte;
}

} // namespace decode_budget
