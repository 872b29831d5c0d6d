#pragma once

#include "image/DibTypes.h"

#include <cstdint>

class CDibImage;

// The whole-picture filters of the Filter menu and the colour group of the
// Image menu. One object serves one command: SetTarget (a blank image of the
// source's size), SetSource, then exactly one filter operation, which writes
// every pixel of the target. Integer arithmetic only; the roundings, clamps
// and edge rules are part of each filter's result.
//
// Neighbourhood filters walk the rows in storage order (bottom-up): the
// "previous" row of a row is the one below it on screen, the "next" row the
// one above, edge rows and columns being their own neighbours. Emboss and
// Find Edge are not symmetric, so this order shows in their results.
//
// Every operation returns 1, also for an empty picture; 0 only when a work
// buffer cannot be had (the target is then incomplete and must be dropped).
class CImageFilter {
public:
    virtual ~CImageFilter() = default;

    void SetTarget(CDibImage* target);
    void SetSource(const CDibImage* source);

    // Point operations.
    int Invert();
    int Gray();
    // Codes 28..33 level to red, green, blue, cyan, magenta, yellow; 34 to the
    // foreground colour, 35 to the background colour.
    int ColorLevel(int code, ColorWord foreground, ColorWord background);
    // Codes 22..27: cool green, blue, cyan; warm red, magenta, yellow.
    int ColorTone(int code);

    // Three-row neighbourhood filters.
    // Strength 1..3 blur small, more, large; 4..6 sharpen small, more, large.
    int Convolve3x3(int strength);
    int Diffuse();
    int Despeckle(int threshold);
    int Emboss(int direction, int depth, ColorWord foreground);
    int FindEdge(int keepOriginal, int colorMode, int transparency, ColorWord background);
    int TraceContour(int darkestEdge, int keepOriginal, int colorMode, int transparency, ColorWord background,
                     ColorWord foreground);

    // Cell filters on n x n blocks, counted from the top-left corner.
    int Mosaic(int cellSize);
    int Average(int cellSize);

    // The level colour of a Color Level code, as a colour word.
    static ColorWord LevelColor(int code, ColorWord foreground, ColorWord background);

private:
    bool Ready() const;
    void SetColorA(ColorWord color);
    void SetColorB(ColorWord color);
    int PointRowsByTable(const std::uint8_t* tables);
    // Start of the row `top` rows from the top in a picture's storage.
    std::uint8_t* StoredRow(std::uint8_t* bits, int top) const;

    int m_pixelOp = 0; // Convolve3x3 strength
    int m_rowOp = 0;   // Trace Contour: 1 darkest-edge rule, 0 lightest-edge rule
    CDibImage* m_dst = nullptr;
    const CDibImage* m_src = nullptr;
    int m_width = 0;
    int m_height = 0;
    std::uint32_t m_rowBytes = 0;
    std::int16_t m_colorA[3] = {0, 0, 0}; // red, green, blue
    std::int16_t m_colorB[3] = {0, 0, 0};
    std::int16_t m_percent = 0;
};
