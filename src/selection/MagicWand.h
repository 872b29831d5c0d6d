#pragma once

struct CommandContext;
class CDibImage;

// The magic wand: marks the pixels whose colour lies within the tolerance box
// of the tapped pixel's colour in the work mask, then lifts the floating
// selection out of it.

// The wand's settings, section "MagicWand": "Tolerance" (0..255, default 32)
// and "Continuous" (1 = the connected area only, default 1).
struct WandSettings {
    int tolerance = 32;
    bool continuous = true;

    static WandSettings Read();
    void Write() const;
};

// How a wand tap combines with the current selection.
enum class WandCombine { New = 1, Add = 2, Subtract = 3 };

// Marks in `mask` every pixel of `picture` that matches the seed colour at
// (x, y): bit = mark (1 select, 0 deselect). With `continuous` only the
// 4-connected area around the seed; otherwise every matching pixel. The seed's
// own bit is always marked. Returns 0 when the connected walk ran out of
// memory for its way back.
int MarkWandArea(CDibImage& picture, CDibImage& mask, int x, int y, int tolerance, bool continuous, int mark);

// The whole wand tap at image point (x, y): stores the current selection into
// the work mask for add and subtract, opens an undo step of kind 5, stamps the
// floating selection, marks the area and lifts the new floating selection.
// When the marking fails, the work mask is cleared and nothing is selected.
// Returns 1 when a floating selection exists afterwards; a tap outside the
// picture does nothing and returns 0.
int RunMagicWand(CommandContext& context, int x, int y, WandCombine combine, int tolerance, bool continuous);
