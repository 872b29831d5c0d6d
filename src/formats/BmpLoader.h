#pragma once

#include "formats/LoadLimits.h"

#include <string>

class CDibImage;

// Loads a BMP file into a fresh 24-bit picture at 72 dpi. A file larger than
// twice the load limits in either direction is shrunk to fit 2W x 2H while it
// streams in. Reports the file's own size. Returns kFileOk, kFileFailed or
// kFileOutOfMemory.
int LoadBmpPicture(const std::string& path, const LoadLimitSize& limits, CDibImage& picture, int& fileWidth,
                   int& fileHeight, bool* transparent = nullptr);

// The size a width x height file is loaded at, given the box it must fit
// (keeping the aspect ratio, rounded to nearest).
LoadLimitSize FitBmpSize(int width, int height, int boxWidth, int boxHeight);
