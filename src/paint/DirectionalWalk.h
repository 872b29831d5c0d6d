#pragma once

#include "paint/DirectionStack.h"

// The depth-first walk shared by the flood fill and the magic wand's
// continuous fill. From the current pixel the directions are tried in the
// order 0 up, 1 right, 2 down, 3 left; the first neighbour inside the image
// that the cell takes becomes the current pixel and its direction is pushed.
// When all four fail, the direction of the way in is popped, the walk steps
// back and goes on with the next direction after it. The walk ends when a pop
// finds the stack empty. Only two bits per step are kept and there is no
// visited-pixel mask: the cell must refuse pixels it has already taken.
//
// Cell: defines a Position type (a pointer cursor on the current pixel, kept
// in a local so that it lives in registers) and
//   Position Start(int x, int y);
//   bool Take(Position& at, int k, int nx, int ny): tests the neighbour in
//     direction k (inside the image, at nx, ny) and, when it qualifies,
//     marks it and moves `at` there;
//   void Back(Position& at, int k): moves `at` back against direction k.
//
// Returns the final position (for what the cell gathered on the way) and sets
// `complete` to false when a push failed for want of memory (the walk then
// went on with its way back cut short, as the stack allows).
constexpr int kWalkStepX[4] = {0, 1, 0, -1};
constexpr int kWalkStepY[4] = {-1, 0, 1, 0};

template <class Cell>
typename Cell::Position WalkFromSeed(int width, int height, int x, int y, DirectionStack& stack,
                                     const Cell& cell, bool& complete) {
    complete = stack.IsUsable();
    typename Cell::Position at = cell.Start(x, y);
    DirectionStack::Cursor directions(stack);
    const auto moved = [&](int k) {
        if (!directions.Push(k)) {
            complete = false;
        }
        x += kWalkStepX[k];
        y += kWalkStepY[k];
    };
    // Each direction's test is written out, so that its bounds check and
    // pointer step are constants; a move starts again at direction 0, a step
    // back resumes after the direction it undid.
    int k = 0;
    for (;;) {
        switch (k) {
        case 0:
            if (y > 0 && cell.Take(at, 0, x, y - 1)) {
                moved(0);
                k = 0;
                continue;
            }
            [[fallthrough]];
        case 1:
            if (x + 1 < width && cell.Take(at, 1, x + 1, y)) {
                moved(1);
                k = 0;
                continue;
            }
            [[fallthrough]];
        case 2:
            if (y + 1 < height && cell.Take(at, 2, x, y + 1)) {
                moved(2);
                k = 0;
                continue;
            }
            [[fallthrough]];
        case 3:
            if (x > 0 && cell.Take(at, 3, x - 1, y)) {
                moved(3);
                k = 0;
                continue;
            }
            [[fallthrough]];
        default:
            break;
        }
        const int j = directions.Pop();
        if (j < 0) {
            directions.Release();
            return at;
        }
        cell.Back(at, j);
        x -= kWalkStepX[j];
        y -= kWalkStepY[j];
        k = j + 1;
    }
}
