#pragma once

#include "formats/LoadLimits.h"
#include "formats/PictureLoader.h"

#include <string>

class CDibImage;

// Decodes GIF and every other format Qt's image readers know (PNG, TIFF,
// WebP, ...) into a fresh 24-bit picture that fits the load limits; a larger
// file is decoded at its own size and shrunk while its rows are copied, so
// only one full-size copy besides the picture exists at a time. Qt decodes
// whole pictures, so files larger than twice the limits in either direction,
// or declaring far more pixels than their bytes could describe, are refused,
// and Qt's allocation limit is set to match. Transparent pixels are laid over
// white. The picture carries no resolution of its own, so it takes the
// screen's. Reports the file's own size. kFileOk, kFileFailed or
// kFileOutOfMemory.
int LoadWithPlatformDecoder(const std::string& path, const LoadLimitSize& limits, CDibImage& picture,
                            PictureFileInfo& info);
