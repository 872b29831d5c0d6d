#pragma once

#include "formats/LoadLimits.h"

#include <string>

class CDibImage;

// Loads a JPEG file into a fresh 24-bit picture at 72 dpi, decoded at the
// largest scale that fits the load limits (not twice them, as for BMP); a
// file too large even at 1/8 is shrunk further while it streams in. When the
// picture cannot be created, the limits are halved once and the file is
// opened again. Reports the file's own size. kFileOk or kFileFailed.
int LoadJpegPicture(const std::string& path, const LoadLimitSize& limits, CDibImage& picture, int& fileWidth,
                    int& fileHeight);
