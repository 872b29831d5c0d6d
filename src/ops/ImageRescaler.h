#pragma once

class CDibImage;

namespace ops {

// Resamples a 24-bit picture onto the (already created) target's size: each
// direction averages areas when it shrinks and interpolates bilinearly when it
// grows, rows first through the RowResampler the picture loader also uses, then
// columns with the same kind of kernel. 0 when working memory
// cannot be had.
int RescalePicture(const CDibImage& source, CDibImage& target);
// Resamples a 1-bit mask onto the target's size, nearest pixel.
int RescaleMask(const CDibImage& source, CDibImage& target);

} // namespace ops
