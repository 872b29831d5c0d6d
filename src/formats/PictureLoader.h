#pragma once

#include "formats/LoadLimits.h"

#include <memory>
#include <string>
#include <vector>

class CDibImage;

// What a load reports besides the picture.
struct PictureFileInfo {
    int type = -1;      // ImageFileType of the file
    int fileWidth = 0;  // the file's own size; the picture is smaller when
    int fileHeight = 0; // the file did not fit the load limits
    // Some pixel of the file is transparent or translucent; the picture has
    // it laid over white.
    bool transparent = false;
};

// Reads a picture file into a new 24-bit picture. The format is chosen by the
// file's first bytes, never by its name: "BM" is read by our BMP reader
// (up to twice the limits, shrunk while streaming), 0xFF 0xD8 by libjpeg-turbo
// (within the limits, at a DCT scale, turned upright), anything else by Qt's
// image readers (within the limits). Returns kFileOk, kFileFailed (missing, unreadable,
// corrupt or unknown file) or kFileOutOfMemory; `picture` is set only on
// success.
// The file name extensions of every format LoadPicture reads (our own BMP
// and JPEG readers, and whatever Qt's installed image plugins read), in
// lower case without the dot, each once; for the Open dialog's filter.
std::vector<std::string> ReadableExtensions();

int LoadPicture(const std::string& path, const LoadLimitSize& limits, std::unique_ptr<CDibImage>& picture,
                PictureFileInfo* info = nullptr);
