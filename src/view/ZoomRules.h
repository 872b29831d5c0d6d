#pragma once

#include <string>

// The zoom code and its arithmetic. Code 1 is actual size, 2..8, 16 and 32
// magnify (each image pixel becomes an n x n block), -2..-8 reduce (one screen
// pixel per n x n image pixels). 0 and -1 never stay stored. Zoomed sizes
// never exceed kMaxZoomedSize in either direction. Stepping in goes
// 1, 2, ..., 8, 16, 32; stepping out the same way back.
namespace zoom {

constexpr int kMaxZoomedSize = 30000;
constexpr int kMaxMagnification = 32;
// From here on one step doubles the magnification.
constexpr int kLastSingleStep = 8;
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
// picture larger than kMaxZoomedSize; a code of 32 stays 32 (and is true).
bool StepIn(int& code, int width, int height);
// One step out. False, with `code` unchanged, when the picture would vanish;
// a code of -8 stays -8 (and is true).
bool StepOut(int& code, int width, int height);

// The code one step in below magnification n (n - 1 up to 8, then n / 2):
// the "x n" commands store it and then step in.
int CodeBelow(int n);

// The largest code at which a picture of width x height fits a client area of
// clientWidth x clientHeight; the strongest reduction when none does.
int FitCode(int width, int height, int clientWidth, int clientHeight);

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
