#pragma once

class CBriselDoc;
class CDibImage;

// Where painting lands: the floating pixels while a selection floats, else
// the picture, and where picture point (0, 0) lies in it.
struct EditingTarget {
    CDibImage* image = nullptr;
    int dx = 0;
    int dy = 0;

    // Whether picture point (x, y) lies on the target's pixels.
    bool Contains(int x, int y) const;
};

EditingTarget EditingTargetOf(CBriselDoc& doc);
