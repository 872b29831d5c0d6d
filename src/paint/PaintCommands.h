#pragma once

struct CommandContext;

// The one-shot painting commands that the fill and gradient tools and the
// command line share. Points are picture coordinates; the work lands on the
// editing target. 1 done, 0 not possible.

// Flood fill with the foreground colour from (x, y), one undo step.
int FillAt(CommandContext& context, int x, int y, int tolerance);

// The gradient from (x0, y0) to (x1, y1) over the whole editing target, in
// the foreground-to-background ramp of `shape` and `colorMode`. The old image
// becomes the undo step; without memory for the new one the user is told and
// nothing changes.
int DrawGradient(CommandContext& context, int shape, int colorMode, int x0, int y0, int x1, int y1);
