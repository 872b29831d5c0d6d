#pragma once

#include <cstddef>

class CDibImage;
class RegionPixels;

// Pixels of an image kept by an undo step in place of a whole copy: the
// original bytes of the places a change touched. Swapping exchanges those
// bytes with the image's, so the same call takes a change back and brings it
// again, and the image object itself stays where it is.
class SavedPixels {
public:
    virtual ~SavedPixels() = default;
    // `image` must have the size the pixels were saved from.
    virtual void SwapWith(CDibImage& image) = 0;
    virtual std::size_t Bytes() const = 0;
    // The store of a painting step (`RegionPixels`), or null.
    virtual RegionPixels* AsRegion() { return nullptr; }
};
