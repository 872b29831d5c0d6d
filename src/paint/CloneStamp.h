#pragma once

#include "paint/StrokeReference.h"

class BrushEngine;
class CDibImage;

// The clone stamp: each dab copies, through the pen's shape, the pixels at
// (pen point - offset) of the picture as it was when the stroke began, so a
// stroke never copies what it has just painted. Source pixels outside the
// picture leave their cells as they are.
//
// The offset is fixed at the first pen-down after a new source point: the
// pen-down point minus the source. Aligned, it stays for later strokes until
// the next source; not aligned, every stroke fixes it again from the source.
// Points are picture pixels; an offset is the same in the floating pixels'
// own coordinates, so strokes into a floating selection use it unchanged.
class CloneStamp {
public:
    void SetSource(int x, int y);
    bool HasSource() const { return m_hasSource; }
    int SourceX() const { return m_sourceX; }
    int SourceY() const { return m_sourceY; }

    // Fixes the offset for a stroke whose pen comes down at (x, y); false
    // (nothing to paint) while no source has been set.
    bool FixOffset(int x, int y, bool aligned);
    bool OffsetFixed() const { return m_offsetFixed; }
    int OffsetX() const { return m_offsetX; }
    int OffsetY() const { return m_offsetY; }

    // Takes the copy of `target` the stroke reads and points the engine at it
    // with the offset. 1, or 0 when the copy cannot be had (nothing is drawn).
    int BeginStroke(BrushEngine& engine, const CDibImage& target);
    void Dab(BrushEngine& engine, int x, int y, int size, int shape);
    void Segment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size, int shape);
    // Drops the copy and the engine's pointer to it.
    void EndStroke(BrushEngine& engine);

private:
    StrokeReference m_reference;
    int m_sourceX = 0;
    int m_sourceY = 0;
    int m_offsetX = 0;
    int m_offsetY = 0;
    bool m_hasSource = false;
    bool m_offsetFixed = false;
};
