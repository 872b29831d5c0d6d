#pragma once

#include <string>

// The kind of picture file, decided by its first two bytes.
enum ImageFileType : int {
    kFileTypeUnknown = -1, // unknown signature, or the file cannot be read
    kFileTypeBmp = 1,      // "BM"
    kFileTypeGif = 2,      // "GI"
    kFileTypeJpeg = 3,     // 0xFF 0xD8
};

ImageFileType GetImageFileType(const std::string& path);
// "bmp", "gif", "jpeg" or "other", as tamrick-cli prints it.
const char* ImageFileTypeName(ImageFileType type);
