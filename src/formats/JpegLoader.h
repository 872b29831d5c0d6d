#pragma once

#include "formats/LoadLimits.h"

#include <memory>
#include <string>

class CDibImage;

// Loads a JPEG file into a new 24-bit picture at 72 dpi that fits the load
// limits, decoded at the largest DCT scale that fits (a file too large even
// at 1/8 is shrunk the rest of the way while it streams in) and turned
// upright by its EXIF orientation. Reports the file's own size, upright.
// Returns kFileOk, kFileFailed or kFileOutOfMemory; `picture` is set only on
// success.
int LoadJpegPicture(const std::string& path, const LoadLimitSize& limits, std::unique_ptr<CDibImage>& picture,
                    int& fileWidth, int& fileHeight);
