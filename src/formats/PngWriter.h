#pragma once

#include <string>

class CDibImage;

// Writes a 24-bit picture as PNG through Qt's writer, with the picture's
// resolution, through a temporary file that replaces `path` only when
// complete. kFileOk, kFileFailed or kFileOutOfMemory.
int WritePng(const std::string& path, const CDibImage& image);
