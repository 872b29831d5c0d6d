#include "formats/PictureLoader.h"

#include "formats/BmpLoader.h"
#include "formats/FileResult.h"
#include "formats/GifStructure.h"
#include "formats/ImageFileType.h"
#include "formats/InputFile.h"
#include "formats/JpegLoader.h"
#include "formats/PlatformDecoder.h"
#include "image/CDibImage.h"
#include "platform/WaitCursor.h"

#include <QImageReader>

#include <algorithm>

namespace {
using Loader = int (*)(const std::string& path, const LoadLimitSize& limits, std::unique_ptr<CDibImage>& picture,
                       PictureFileInfo& info);

// Loaders that fill a picture made for them.
template <typename Fill>
int IntoNewPicture(std::unique_ptr<CDibImage>& picture, Fill&& fill) {
    auto loaded = std::make_unique<CDibImage>();
    const int result = fill(*loaded);
    if (result == kFileOk) {
        picture = std::move(loaded);
    }
    return result;
}

int LoadBmp(const std::string& path, const LoadLimitSize& limits, std::unique_ptr<CDibImage>& picture,
            PictureFileInfo& info) {
    return IntoNewPicture(picture, [&](CDibImage& loaded) {
        return LoadBmpPicture(path, limits, loaded, info.fileWidth, info.fileHeight, &info.transparent);
    });
}

int LoadJpeg(const std::string& path, const LoadLimitSize& limits, std::unique_ptr<CDibImage>& picture,
             PictureFileInfo& info) {
    return LoadJpegPicture(path, limits, picture, info.fileWidth, info.fileHeight);
}

int LoadOther(const std::string& path, const LoadLimitSize& limits, std::unique_ptr<CDibImage>& picture,
              PictureFileInfo& info) {
    return IntoNewPicture(picture,
                          [&](CDibImage& loaded) { return LoadWithPlatformDecoder(path, limits, loaded, info); });
}

// GIF is decoded by the platform decoder too, but only once the file is
// known to hold its whole first image.
int LoadGif(const std::string& path, const LoadLimitSize& limits, std::unique_ptr<CDibImage>& picture,
            PictureFileInfo& info) {
    if (!GifFirstImageIsComplete(path)) {
        return kFileFailed;
    }
    return LoadOther(path, limits, picture, info);
}

struct LoaderEntry {
    ImageFileType type;
    Loader load;
};

// Every type not listed goes to the platform decoder.
constexpr LoaderEntry kLoaders[] = {
    {kFileTypeBmp, LoadBmp},
    {kFileTypeGif, LoadGif},
    {kFileTypeJpeg, LoadJpeg},
};

Loader LoaderFor(ImageFileType type) {
    for (const LoaderEntry& entry : kLoaders) {
        if (entry.type == type) {
            return entry.load;
        }
    }
    return LoadOther;
}
} // namespace

int LoadPicture(const std::string& path, const LoadLimitSize& limits, std::unique_ptr<CDibImage>& picture,
                PictureFileInfo* info) {
    platform::WaitCursor wait;
    if (!InputFile::IsRegularFile(path)) {
        return kFileFailed;
    }
    const ImageFileType type = GetImageFileType(path);
    std::unique_ptr<CDibImage> loaded;
    PictureFileInfo found;
    found.type = type;
    const int result = LoaderFor(type)(path, limits, loaded, found);
    if (info != nullptr) {
        *info = found;
    }
    if (result == kFileOk) {
        picture = std::move(loaded);
    }
    return result;
}

std::vector<std::string> ReadableExtensions() {
    std::vector<std::string> extensions = {"bmp", "jpg", "jpeg", "gif", "png"};
    for (const QByteArray& format : QImageReader::supportedImageFormats()) {
        const std::string name = format.toLower().toStdString();
        if (std::find(extensions.begin(), extensions.end(), name) == extensions.end()) {
            extensions.push_back(name);
        }
    }
    return extensions;
}
