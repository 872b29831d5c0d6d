#pragma once

#include <memory>

class CDibImage;

// Turns a 24-bit picture into an 8-bit copy with a full 256-entry colour table
// for the GIF writer. A picture with at most 256 colours is copied exactly
// (its own colours, no dithering). Otherwise the palette comes from Wu's
// quantizer and the pixels are mapped with Floyd-Steinberg error diffusion
// that runs alternate rows in opposite directions, so no drift builds up
// along one side.
class ColorReducer {
public:
    // Null when memory ran out or the picture is not 24-bit.
    static std::unique_ptr<CDibImage> Reduce(const CDibImage& picture);
};
