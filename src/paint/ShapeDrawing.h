#pragma once

class BrushEngine;

// Rectangles and ellipses of the shape tools, drawn with the brush engine's
// solid spans (its target and colours must be set). The rectangle is given by
// inclusive image corners in any order; every row is clipped to the image.
//
// Styles: 0 an outline of the given thickness in the foreground colour lying
// inside the rectangle; 1 the same outline with the inside filled with the
// background colour; 2 the whole shape filled with the foreground colour.
void DrawRectangleShape(BrushEngine& engine, int x0, int y0, int x1, int y1, int thickness, int style);
void DrawEllipseShape(BrushEngine& engine, int x0, int y0, int x1, int y1, int thickness, int style);

// The columns of row `row` (0..height-1) of the ellipse inscribed in a
// width x height box, as offsets from its left edge; false when the row holds
// no pixel. Symmetric left to right and top to bottom.
bool EllipseRowExtent(int width, int height, int row, int& first, int& last);

// The square constraint of the drag tools: the end point at distance
// n = min(|x1 - x0|, |y1 - y0|) from the start along both axes, in the drag's
// quadrant (a zero difference counts as positive for x and negative for y).
void ConstrainToSquare(int x0, int y0, int& x1, int& y1);

// The line tool's snap to 0, 45 and 90 degrees: slope |dy| / |dx| (3.0 for a
// vertical drag) below 0.5 is horizontal, up to 2.0 diagonal, else vertical.
void SnapLineEnd(int x0, int y0, int& x1, int& y1);
