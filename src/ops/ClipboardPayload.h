#pragma once

#include "platform/HeapBlock.h"

#include <cstddef>
#include <cstdint>
#include <memory>

class CBriselDoc;
class CDibImage;

// The clipboard exchange of a picture and its selection: the picture travels
// as a packed 24-bit DIB, the floating mask beside it as a packed 1-bit DIB
// (the private format "ImageMask"). The window layer moves the blocks to and
// from the system clipboard; this is the packing and unpacking.
struct ClipboardPayload {
    platform::HeapBlock picture; // packed DIB of the edit target
    platform::HeapBlock mask;    // packed 1-bit DIB of the floating mask, or empty
};

// Packs the edit target (the floating pixels while a selection exists, else
// the whole picture) and, when a selection exists, its mask. Returns 1, or 0
// after showing the memory message when a block cannot be made (what was
// packed already stays in the payload).
int PackClipboardPayload(const CBriselDoc& doc, ClipboardPayload& payload);

// The picture and mask of a paste. A picture that is not 24 bits per pixel is
// refused with the "true color" message; a picture or mask that cannot be made
// from the data ends silently. Without a mask block (or with one that does not
// fit the picture), `mask` is a full mask of the picture's size, and
// `maskGiven` (when asked for) tells which of the two it is. Returns 1 on
// success.
int UnpackClipboardPayload(const std::uint8_t* picture, std::size_t pictureSize, const std::uint8_t* mask,
                           std::size_t maskSize, std::unique_ptr<CDibImage>& image,
                           std::unique_ptr<CDibImage>& imageMask, bool* maskGiven = nullptr);
