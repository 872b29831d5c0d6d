#pragma once

#include <string>

class CDibImage;

// Decodes GIF and every other format Qt's image readers know (PNG, TIFF,
// WebP, ...) into a fresh 24-bit picture. Pictures larger than 10000 x 10000
// are decoded scaled down to fit; transparent pixels are laid over white. The
// picture carries no resolution of its own, so it takes the screen's.
// Reports the decoded size as the file's size. kFileOk, kFileFailed or
// kFileOutOfMemory.
int LoadWithPlatformDecoder(const std::string& path, CDibImage& picture, int& fileWidth, int& fileHeight);
