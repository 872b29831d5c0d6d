#pragma once

#include "image/CommandContext.h"

#include <memory>

class CDibImage;

// The steps every image command shares when it hands a new image to the
// document.
namespace ops {

// A blank image with the depth, palette and resolution of `like` and the given
// size; shows string 65 and returns null when it cannot be made.
std::unique_ptr<CDibImage> CreateResultImage(const CDibImage& like, int width, int height);
// The same without a message (for masks made beside a picture).
std::unique_ptr<CDibImage> CreateBlankLike(const CDibImage& like, int width, int height);

// Makes `result` the editing target, marks the document modified, gives the
// old image to the undo history as an image step (kind 1) and updates the views.
void CommitImageStep(CommandContext& ctx, std::unique_ptr<CDibImage> result);

// Makes `result` and `mask` the editing target and its mask (the floating
// mask while a selection floats, else the selection mask), marks the document
// modified, gives both old ones to the undo history as an image-and-mask step
// (kind 10) and tells the views that the size may have changed.
void CommitImageAndMaskStep(CommandContext& ctx, std::unique_ptr<CDibImage> result,
                            std::unique_ptr<CDibImage> mask);

} // namespace ops
