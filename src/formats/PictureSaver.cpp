#include "formats/PictureSaver.h"

#include "formats/BmpWriter.h"
#include "formats/CGifWriter.h"
#include "formats/ColorReducer.h"
#include "formats/FileResult.h"
#include "formats/JpegWriter.h"
#include "formats/PngWriter.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "platform/WaitCursor.h"

#include <cctype>
#include <string_view>

namespace {
int SaveBmp(const std::string& path, const CDibImage& image, int) {
    return WriteBmp(path, image);
}
int SavePng(const std::string& path, const CDibImage& image, int) {
    return WritePng(path, image);
}
int SaveJpeg(const std::string& path, const CDibImage& image, int quality) {
    return WriteJpeg(path, image, quality);
}

int SaveGif(const std::string& path, const CDibImage& image, int) {
    if (image.PixelFormat() != kFillFormatTrueColor) {
        return kFileFailed;
    }
    platform::HeapBlock packed;
    {
        const std::unique_ptr<CDibImage> reduced = ColorReducer::Reduce(image);
        if (!reduced) {
            return kFileFailed;
        }
        packed = reduced->ToPackedDib();
        if (!packed) {
            return kFileOutOfMemory;
        }
    }
    CGifWriter writer;
    return writer.WriteGif(packed.data(), packed.size(), path);
}

struct SaverEntry {
    std::string_view extension;
    int (*save)(const std::string& path, const CDibImage& image, int quality);
};

constexpr SaverEntry kSavers[] = {
    {"bmp", SaveBmp},
    {"gif", SaveGif},
    {"png", SavePng},
};

std::string LastThreeLower(const std::string& path) {
    std::string extension = path.size() >= 3 ? path.substr(path.size() - 3) : path;
    for (char& c : extension) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return extension;
}
} // namespace

int SavePicture(const std::string& path, const CDibImage& image, int jpegQuality) {
    platform::WaitCursor wait;
    const std::string extension = LastThreeLower(path);
    for (const SaverEntry& entry : kSavers) {
        if (entry.extension == extension) {
            return entry.save(path, image, jpegQuality);
        }
    }
    return SaveJpeg(path, image, jpegQuality);
}
