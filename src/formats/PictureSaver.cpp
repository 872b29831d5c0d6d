#include "formats/PictureSaver.h"

#include "formats/BmpWriter.h"
#include "formats/CGifWriter.h"
#include "formats/ColorReducer.h"
#include "formats/FileResult.h"
#include "formats/JpegWriter.h"
#include "formats/PngWriter.h"
#include "formats/SafeFileWriter.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "platform/StringTable.h"
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
    {"bmp", SaveBmp}, {"gif", SaveGif}, {"jpg", SaveJpeg}, {"jpeg", SaveJpeg}, {"png", SavePng},
};

// The extension after the last dot of the file name, in lower case.
std::string ExtensionOf(const std::string& path) {
    const auto slash = path.rfind('/');
    const auto dot = path.rfind('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) {
        return {};
    }
    std::string extension = path.substr(dot + 1);
    for (char& c : extension) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return extension;
}

const SaverEntry* SaverFor(const std::string& path) {
    const std::string extension = ExtensionOf(path);
    for (const SaverEntry& entry : kSavers) {
        if (entry.extension == extension) {
            return &entry;
        }
    }
    return nullptr;
}
} // namespace

bool IsSaveableName(const std::string& path) {
    return SaverFor(path) != nullptr;
}

std::string UnknownSaveTypeMessage() {
    std::string message(platform::LoadString(platform::IDS_UNKNOWN_SAVE_TYPE));
    for (const SaverEntry& entry : kSavers) {
        message += std::string(&entry == kSavers ? " ." : ", .") + std::string(entry.extension);
    }
    return message;
}

std::string SaveFailureReason() {
    return SafeFileWriter::LastFailure();
}

std::string SaveFailureMessage() {
    std::string message(platform::LoadString(platform::IDS_UNABLE_TO_SAVE));
    const std::string reason = SaveFailureReason();
    return reason.empty() ? message : message + "\n" + reason;
}

int SavePicture(const std::string& path, const CDibImage& image, int jpegQuality) {
    platform::WaitCursor wait;
    SafeFileWriter::SetLastFailure({});
    const SaverEntry* saver = SaverFor(path);
    if (saver == nullptr) {
        SafeFileWriter::SetLastFailure(UnknownSaveTypeMessage());
        return kFileFailed;
    }
    return saver->save(path, image, jpegQuality);
}
