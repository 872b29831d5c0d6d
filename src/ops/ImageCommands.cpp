#include "ops/ImageCommands.h"

#include "image/CBriselDoc.h"
#include "image/CDibImage.h"
#include "ops/CImageFilter.h"
#include "ops/CommandHandOver.h"
#include "platform/WaitCursor.h"

namespace {

constexpr int kDespeckleThreshold = 64;
constexpr int kAverageCellSize = 4;

int RunFilter(CImageFilter& filter, int code, const FilterOptions& options, const CommandContext& ctx) {
    if (code >= kBlurSmall && code <= kSharpenLarge) {
        return filter.Convolve3x3(code);
    }
    if (code >= kCoolGreen && code <= kWarmYellow) {
        return filter.ColorTone(code);
    }
    if (code >= kLevelRed && code <= kLevelBackground) {
        return filter.ColorLevel(code, ctx.foreground, ctx.background);
    }
    switch (code) {
    case kInvert:
        return filter.Invert();
    case kDiffuse:
        return filter.Diffuse();
    case kDespeckle:
        return filter.Despeckle(kDespeckleThreshold);
    case kFindEdge:
        return filter.FindEdge(options.keepOriginal, options.colorMode, options.transparency, ctx.background);
    case kTraceContour:
        return filter.TraceContour(options.darkestEdge, options.keepOriginal, options.colorMode,
                                   options.transparency, ctx.background, ctx.foreground);
    case kMosaic:
        return filter.Mosaic(options.cellSize);
    case kEmboss:
        return filter.Emboss(options.direction, options.depth, ctx.foreground);
    case kAverage:
        return filter.Average(kAverageCellSize);
    case kGray:
        return filter.Gray();
    default:
        return 0;
    }
}

} // namespace

FilterOptions DefaultFilterOptions(int code) {
    FilterOptions options;
    if (code == kTraceContour) {
        options.keepOriginal = 0;
    }
    return options;
}

int RunImageCommand(CommandContext& ctx, int code, const FilterOptions& options) {
    const CDibImage* source = ctx.doc.GetImage();
    if (source == nullptr || source->BitsPerPixel() != 24) {
        return 0;
    }
    auto result = ops::CreateResultImage(*source, source->Width(), source->Height());
    if (!result) {
        return 0;
    }
    platform::WaitCursor wait;
    CImageFilter filter;
    filter.SetTarget(result.get());
    filter.SetSource(source);
    if (!RunFilter(filter, code, options, ctx)) {
        return 0;
    }
    ops::CommitImageStep(ctx, std::move(result));
    return 1;
}
