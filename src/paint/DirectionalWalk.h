#pragma once

#include "paint/DirectionStack.h"

// The depth-first walk shared by the flood fill and the magic wand's
// continuous fill. From the current pixel the directions are tried in the
// order up, right, down, left; the first neighbour inside the image that the
// visitor takes becomes the current pixel and its direction is pushed. When
// all four fail, the direction of the way in is popped, the walk steps back
// and goes on with the next direction after it. The walk ends when a pop
// finds the stack empty. Only two bits per step are kept, and no visited-pixel
// mask: the visitor must refuse pixels it has already taken.
//
// Visitor: bool Take(int x, int y) tests a neighbour inside the image and, when
// it qualifies, marks it and returns true.
//
// Returns false when a push failed for want of memory (the walk then went on
// with its way back cut short, as the stack allows).
template <class Visitor>
bool WalkFromSeed(int width, int height, int x, int y, DirectionStack& stack, Visitor& visitor) {
    static constexpr int kStepX[4] = {0, 1, 0, -1};
    static constexpr int kStepY[4] = {-1, 0, 1, 0};
    bool complete = stack.IsUsable();
    int k = 0;
    for (;;) {
        if (k < 4) {
            const int nx = x + kStepX[k];
            const int ny = y + kStepY[k];
            if (static_cast<unsigned>(nx) < static_cast<unsigned>(width) &&
                static_cast<unsigned>(ny) < static_cast<unsigned>(height) && visitor.Take(nx, ny)) {
                if (!stack.Push(k)) {
                    complete = false;
                }
                x = nx;
                y = ny;
                k = 0;
                continue;
            }
            ++k;
            continue;
        }
        const int j = stack.Pop();
        if (j < 0) {
            return complete;
        }
        x -= kStepX[j];
        y -= kStepY[j];
        k = j + 1;
    }
}
