#pragma once

#include <string>

// Walks a GIF file's block structure (header, colour tables, extensions,
// image descriptor, data sub-blocks) without decoding pixels. True when the
// logical screen has a size and the first image and all its data sub-blocks
// are present. Qt's GIF reader shows a
// cut-short file as a picture with its missing part blank, so the loader asks
// this first and refuses such files. (Qt also decodes a GIF at its screen's
// width, so a screen 0 pixels high but 60000 wide would cost gigabytes.)
bool GifFirstImageIsComplete(const std::string& path);
