#include "formats/ImageFileType.h"

#include "formats/InputFile.h"

#include <cstdint>

namespace {
struct Signature {
    std::uint8_t first;
    std::uint8_t second;
    ImageFileType type;
    const char* name;
};

constexpr Signature kSignatures[] = {
    {'B', 'M', kFileTypeBmp, "bmp"},
    {'G', 'I', kFileTypeGif, "gif"},
    {0xFF, 0xD8, kFileTypeJpeg, "jpeg"},
};
} // namespace

ImageFileType GetImageFileType(const std::string& path) {
    InputFile file;
    std::uint8_t bytes[2] = {};
    if (!file.Open(path) || !file.Read(bytes, sizeof bytes)) {
        return kFileTypeUnknown;
    }
    for (const Signature& signature : kSignatures) {
        if (bytes[0] == signature.first && bytes[1] == signature.second) {
            return signature.type;
        }
    }
    return kFileTypeUnknown;
}

const char* ImageFileTypeName(ImageFileType type) {
    for (const Signature& signature : kSignatures) {
        if (signature.type == type) {
            return signature.name;
        }
    }
    return "other";
}
