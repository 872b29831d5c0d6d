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
                       int& fileWidth, int& fileHeight);

// Loaders that fill a picture made for them.
template <int (*Fill)(const std::string&, const LoadLimitSize&, CDibImage&, int&, int&)>
int IntoNewPicture(const std::string& path, const LoadLimitSize& limits, std::unique_ptr<CDibImage>& picture,
                   int& fileWidth, int& fileHeight) {
    auto loaded = std::make_unique<CDibImage>();
    const int result = Fill(path, limits, *loaded, fileWidth, fileHeight);
    if (result == kFileOk) {
        picture = std::move(loaded);
    }
    return result;
}

constexpr Loader LoadOther = IntoNewPicture<LoadWithPlatformDecoder>;

// GIF is decoded by the platform decoder too, but only once the file is
// known to hold its whole first image.
int LoadGif(const std::string& path, const LoadLimitSize& limits, std::unique_ptr<CDibImage>& picture,
            int& fileWidth, int& fileHeight) {
    if (!GifFirstImageIsComplete(path)) {
        return kFileFailed;
    }
    return LoadOther(path, limits, picture, fileWidth, fileHeight);
}

struct LoaderEntry {
    ImageFileType type;
    Loader load;
};

// Every type not listed goes to the platform decoder.
constexpr LoaderEntry kLoaders[] = {
    {kFileTypeBmp, IntoNewPicture<LoadBmpPicture>},
    {kFileTypeGif, LoadGif},
    {kFileTypeJpeg, LoadJpegPicture},
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
    int fileWidth = 0;
    int fileHeight = 0;
    const int result = LoaderFor(type)(path, limits, loaded, fileWidth, fileHeight);
    if (info != nullptr) {
        *info = PictureFileInfo{type, fileWidth, fileHeight};
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
