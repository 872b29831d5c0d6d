#pragma once

#include "image/CommandContext.h"

// The image commands as core functions of the document, the undo history and
// the current colours, so that the menus, tamrick-cli and the tests run the
// same code. Each works on the current editing target (the floating pixels
// while a selection floats, else the picture), records one undo step, and
// returns 1 on success, 0 when nothing changed. When the result image cannot
// be created the user sees the "free disk space" message (string 65).

// Filter and colour command codes of RunImageCommand.
enum ImageCommandCode : int {
    kBlurSmall = 1,
    kBlurMore = 2,
    kBlurLarge = 3,
    kSharpenSmall = 4,
    kSharpenMore = 5,
    kSharpenLarge = 6,
    kInvert = 7,
    kDiffuse = 8,
    kDespeckle = 9,
    kFindEdge = 10,
    kTraceContour = 11,
    kMosaic = 12,
    kEmboss = 13,
    kAverage = 14,
    kGray = 15,
    kCoolGreen = 22,
    kCoolBlue = 23,
    kCoolCyan = 24,
    kWarmRed = 25,
    kWarmMagenta = 26,
    kWarmYellow = 27,
    kLevelRed = 28,
    kLevelGreen = 29,
    kLevelBlue = 30,
    kLevelCyan = 31,
    kLevelMagenta = 32,
    kLevelYellow = 33,
    kLevelForeground = 34,
    kLevelBackground = 35,
};

// What the option dialogs of codes 10 to 14 ask for.
struct FilterOptions {
    int direction = 0; // Emboss 0..7
    int depth = 2;     // Emboss 1..10
    int cellSize = 4;  // Mosaic 2..16
    int keepOriginal = 1;
    int colorMode = 1;
    int transparency = 0; // 0..100
    int darkestEdge = 0;  // Trace Contour only
};
// The dialogs' defaults for a code (Trace Contour starts with the background
// colour, Find Edge with the original image).
FilterOptions DefaultFilterOptions(int code);

// Runs filter or colour command `code` (a dialog has already been confirmed).
// Average always works on 4 x 4 cells whatever its dialog offered.
int RunImageCommand(CommandContext& ctx, int code, const FilterOptions& options);
inline int RunImageCommand(CommandContext& ctx, int code) {
    return RunImageCommand(ctx, code, DefaultFilterOptions(code));
}

// Geometry command codes of RunGeometryCommand.
enum GeometryCommandCode : int { kFlipHorizontal = 0, kFlipVertical = 1, kRotateLeft = 2, kRotateRight = 3 };
int RunGeometryCommand(CommandContext& ctx, int code);

// Rotate...: `degrees` 0..359 (else string 66 and no change), clockwise or
// counter-clockwise. The result is the bounding box of the turned picture;
// pixels no source pixel falls on take the background colour.
int RunRotate(CommandContext& ctx, int degrees, bool clockwise);

// Rescale...: a new size (1..kLargestPictureSide each), and a resolution
// (0 keeps it, else up to kMaxResolution). When
// only the resolution changes the step is a resolution step (undo kind 2).
int RunRescale(CommandContext& ctx, int width, int height, int dpi);

// Largest resolution in dots per inch.
constexpr int kMaxResolution = 32767;
