#pragma once

#include <memory>

class CBriselDoc;
class CDibImage;

// The picture exchange with the system clipboard. Copy puts the edit target
// three ways: as a plain image that any program can paste, as our own packed
// 24-bit DIB, and, while a selection exists, its packed 1-bit mask beside it.
// Reading prefers our own packed DIB (with its mask) and otherwise takes any
// image another program put there, converted to 24 bits; pictures of 8 bits
// or fewer per pixel (indexed, grey or 1-bit) are refused with the "true
// color" message.
class ClipboardExchange {
public:
    static constexpr const char* kDibMime = "application/x-tamrick-dib";
    static constexpr const char* kMaskMime = "application/x-tamrick-imagemask";

    // True when the clipboard holds a picture of ours or another program's.
    static bool HasPicture();
    // True while the clipboard still holds our own packed DIB, that is until
    // another program puts something there.
    static bool HoldsOurPicture();
    // Empties the clipboard.
    static void Clear();
    // Puts the document's edit target on the clipboard. 1 on success; 0 after
    // a message (no clipboard: 70; a block that cannot be made: 27, with what
    // was packed already left on the clipboard).
    static int Put(const CBriselDoc& doc);
    // The clipboard's picture and its mask. `mask` stays null when the
    // clipboard holds no mask of ours; the caller decides what that means.
    // 1 on success; 0 after a message, or silently when the data is broken.
    static int Read(std::unique_ptr<CDibImage>& image, std::unique_ptr<CDibImage>& mask);
};
