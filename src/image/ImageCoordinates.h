#pragma once

#include <algorithm>

// Every point that reaches the painting, selection and moving engines, from
// the window's tools and from the command line alike, is first kept within
// -kCoordinateLimit..kCoordinateLimit. That is far beyond any picture (a side
// is at most 32767 pixels when loaded), so no shape a user can see changes,
// and it leaves room for the engines' arithmetic: a difference of two
// coordinates, twice it, or a coordinate plus a picture side all fit an int.
// The engines themselves only work on the part of a shape that lies inside
// the picture, so a shape reaching that far costs no more than one that
// stops at the picture's edge.
inline constexpr int kCoordinateLimit = 1 << 24;

inline constexpr int ClampCoordinate(long long value) {
    return static_cast<int>(std::clamp<long long>(value, -kCoordinateLimit, kCoordinateLimit));
}
