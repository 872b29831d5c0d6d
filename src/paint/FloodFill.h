#pragma once

#include "image/DibTypes.h"

class CDibImage;

// Fills the 4-connected area around (x, y) whose colours lie in the box of
// +-tolerance around the seed pixel's colour, per channel, with `fillColor`
// (0x00BBGGRR; on a 1-bit image the bit becomes whether its low 16 bits are
// non-zero). Pixels that already have the fill colour stop the walk.
//
// Returns 1 when the seed lay inside the image (then `changed`, if given, is
// the inclusive rectangle of the painted pixels), 0 otherwise.
int FloodFill(CDibImage& image, int x, int y, ColorWord fillColor, int tolerance,
              ImageRect* changed = nullptr);
