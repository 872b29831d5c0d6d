#pragma once

class BrushEngine;

// The artistic pens of the tablet tool: one stroke segment built from several
// brush-engine segments with shrinking sizes and changing blend parameters.
// Kinds: 2 lighter, 3 darker, 7 water (wash), 8 wax, 9 carbon, 10 chalk,
// 11 mick (grain pens), 12 oil (speckle). The engine's target, reference and
// colours must be set. Returns the engine's result (0 for kinds 2 and 3
// without a reference image); an unknown kind draws nothing and returns 0.
int PaintArtisticSegment(BrushEngine& engine, int kind, int x1, int y1, int x2, int y2, int size, int shape);

// True for the kinds above.
bool IsArtisticPenKind(int kind);
