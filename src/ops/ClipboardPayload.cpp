#include "ops/ClipboardPayload.h"

#include "image/CBriselDoc.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

#include <cstring>

namespace {

int BitCountOf(const std::uint8_t* packed, std::size_t size) {
    if (packed == nullptr || size < sizeof(BitmapInfoHeader)) {
        return 0;
    }
    BitmapInfoHeader header;
    std::memcpy(&header, packed, sizeof header);
    return header.biBitCount;
}

} // namespace

int PackClipboardPayload(const CBriselDoc& doc, ClipboardPayload& payload) {
    const CDibImage* image = doc.GetImage();
    if (image == nullptr) {
        return 0;
    }
    payload.picture = image->ToPackedDib();
    if (payload.picture && doc.GetFloatMask() != nullptr) {
        payload.mask = doc.GetFloatMask()->ToPackedDib();
        if (!payload.mask) {
            platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
            return 0;
        }
    }
    if (!payload.picture) {
        platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    return 1;
}

int UnpackClipboardPayload(const std::uint8_t* picture, std::size_t pictureSize, const std::uint8_t* mask,
                           std::size_t maskSize, std::unique_ptr<CDibImage>& image,
                           std::unique_ptr<CDibImage>& imageMask, bool* maskGiven) {
    image.reset();
    imageMask.reset();
    if (picture == nullptr) {
        return 0;
    }
    if (BitCountOf(picture, pictureSize) != 24) {
        platform::ShowMessage(platform::IDS_PASTE_TRUE_COLOR_ONLY, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    auto newImage = std::make_unique<CDibImage>();
    if (!newImage->CreateFromPackedDib(picture, pictureSize)) {
        return 0;
    }
    std::unique_ptr<CDibImage> newMask;
    if (mask != nullptr && BitCountOf(mask, maskSize) == 1) {
        newMask = std::make_unique<CDibImage>();
        const bool fits = newMask->CreateFromPackedDib(mask, maskSize) &&
                          newMask->Width() == newImage->Width() && newMask->Height() == newImage->Height();
        if (!fits) {
            newMask.reset();
        }
    }
    if (maskGiven != nullptr) {
        *maskGiven = newMask != nullptr;
    }
    if (!newMask) {
        newMask = CreateMask(newImage->Width(), newImage->Height(), false);
        if (!newMask) {
            return 0;
        }
    }
    image = std::move(newImage);
    imageMask = std::move(newMask);
    return 1;
}
