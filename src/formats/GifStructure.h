#pragma once

#include <string>

// Walks a GIF file's block structure (header, colour tables, extensions,
// image descriptor, data sub-blocks) without decoding pixels. True when the
// logical screen is not empty and the first
// image and all its data sub-blocks are present. Qt's GIF reader shows a
// cut-short file as a picture with its missing part blank, so the loader asks
// this first and refuses such files. (Qt decodes a GIF at its screen's full
// size, so the platform decoder bounds the screen by the load limits.)
bool GifFirstImageIsComplete(const std::string& path);
