#pragma once

#include <string>

class CDibImage;

// Writes `image` as a Windows bitmap exactly as it is held in memory (its own
// 40-byte header, colour table and bottom-up rows) behind a 14-byte file
// header, through a temporary file that replaces `path` only when complete.
// kFileOk, kFileFailed on a file error, kFileOutOfMemory when the packed copy
// cannot be made.
int WriteBmp(const std::string& path, const CDibImage& image);
