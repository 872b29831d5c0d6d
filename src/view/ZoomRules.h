#pragma once

#include <string>

// The zoom code and its arithmetic. Code 1 is actual size, 2..8 magnify (each
// image pixel becomes an n x n block), -2..-8 reduce (one screen pixel per
// n x n image pixels). 0 and -1 never stay stored. Zoomed sizes never exceed
// kMaxZoomedSize in either direction.
namespace zoom {

constexpr int kMaxZoomedSize = 30000;
constexpr int kMaxMagnification = 8;
constexpr int kMaxReduction = -8;

struct Size {
    int width = 0;
    int height = 0;
};

// w*z for codes above 0, w/|z| (integer division) otherwise.
Size ZoomedSize(int width, int height, int code);
// 0 and -1 are stored as 1.
int Normalised(int code);

// One step in. False, with `code` unchanged, when the step would make the
// picture larger than kMaxZoomedSize; a code of 8 stays 8 (and is true).
bool StepIn(int& code, int width, int height);
// One step out. False, with `code` unchanged, when the picture would vanish;
// a code of -8 stays -8 (and is true).
bool StepOut(int& code, int width, int height);

// Enabling rules of the View menu's "x n" and "/ n" entries.
bool CanMagnifyTo(int n, int width, int height);
bool CanReduceTo(int n, int width, int height);

// Image coordinate of a client offset d (scroll - origin + screen already added).
int ScreenOffsetToImage(int d, int code);
// Snaps a scroll position down to the zoom grid: (position / z) * z.
int SnapToGrid(int position, int code);
// The caption suffix: "(x%d)" for z >= 1, "(1/%d)" for reductions.
std::string CaptionSuffix(int code);

} // namespace zoom
