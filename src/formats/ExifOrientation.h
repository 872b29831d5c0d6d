#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

class CDibImage;

// The EXIF orientation of a photo (1..8): how the stored picture must be
// turned and mirrored to stand as the camera saw it. 1 is upright; 5 to 8
// swap width and height.
namespace exif {

// The orientation tag of IFD0 in an APP1 "Exif" segment's data; 1 when the
// segment has none or is malformed. Never reads outside `size` bytes.
int ReadOrientation(const std::uint8_t* data, std::size_t size);

inline bool SwapsSides(int orientation) {
    return orientation >= 5 && orientation <= 8;
}

// Makes `picture` upright. Flips are done in place; a quarter turn builds
// the turned picture and drops the stored one. kFileOk, or kFileOutOfMemory
// with the picture unchanged.
int MakeUpright(std::unique_ptr<CDibImage>& picture, int orientation);

} // namespace exif
