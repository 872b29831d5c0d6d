#pragma once

#include <string>

// Walks a GIF file's block structure (header, colour tables, extensions,
// image descriptor, data sub-blocks) without decoding pixels. True when the
// logical screen has a size of at most 10000 x 10000 pixels and the first
// image and all its data sub-blocks are present. Qt's GIF reader shows a
// cut-short file as a picture with its missing part blank, so the loader asks
// this first and refuses such files. (Qt also decodes a GIF at its screen's
// full size before scaling, so a huge or half-empty screen costs gigabytes.)
bool GifFirstImageIsComplete(const std::string& path);
