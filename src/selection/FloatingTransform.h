#pragma once

struct CommandContext;

// The floating selection's handles, released: the floating pixels and mask
// are transformed once by the very commands of the Image menu (Rescale...
// and Rotate...), so the result is what those commands give, and then placed
// where the drag showed them. Both are one undo step (the command's
// image-and-mask step, which also takes the position back). The selection
// stays floating. 1 done, 0 nothing floats or the command failed (its own
// message was shown and nothing changed).

// Scales to width x height with its top-left corner at picture point
// (left, top).
int ScaleFloating(CommandContext& context, int width, int height, int left, int top);

// Turns by `degrees` clockwise (0..359) about the centre of its rectangle;
// the turned rectangle keeps that centre (half pixels round down).
int RotateFloating(CommandContext& context, int degrees);
