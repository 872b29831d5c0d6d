#pragma once

#include <string>

class CDibImage;

// Writes a picture in the format its file name asks for: the last three
// characters of `path`, in any case, "bmp" for BMP, "gif" for GIF (reduced to
// 256 colours first), "png" for PNG, and anything else as JPEG at `jpegQuality`
// (1..100). Every format is written to `path` + ".xxx" and moved over `path`
// only after a complete write, so a failure leaves the old file as it was and
// no temporary file behind. Returns kFileOk, kFileFailed or kFileOutOfMemory.
int SavePicture(const std::string& path, const CDibImage& image, int jpegQuality);
