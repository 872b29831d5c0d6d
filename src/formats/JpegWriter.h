#pragma once

#include <string>

class CDibImage;

// Writes a 24-bit picture as a baseline JPEG with libjpeg-turbo at `quality`
// (1..100), through a temporary file that replaces `path` only when complete.
// The picture's resolution goes into the JFIF header. kFileOk, kFileFailed
// (file or codec error, nothing left behind) or kFileOutOfMemory.
int WriteJpeg(const std::string& path, const CDibImage& image, int quality);
