// Flip, quarter turn, Rotate... and Rescale... as document commands.
#include "image/CBriselDoc.h"
#include "image/CDibImage.h"
#include "image/CUndoHistory.h"
#include "image/DibHelpers.h"
#include "ops/CImageTransform.h"
#include "ops/CommandHandOver.h"
#include "ops/ImageCommands.h"
#include "ops/ImageRescaler.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"
#include "platform/WaitCursor.h"

namespace {

int Transform(CImageTransform& engine, int code) {
    switch (code) {
    case kFlipHorizontal:
        return engine.FlipHorizontal();
    case kFlipVertical:
        return engine.FlipVertical();
    case kRotateLeft:
        return engine.RotateLeft();
    case kRotateRight:
        return engine.RotateRight();
    default:
        return 0;
    }
}

// Runs `operation(engine)` from `source` into a new blank image like it.
template <class Operation>
std::unique_ptr<CDibImage> TransformInto(const CDibImage& source, int width, int height,
                                         const Operation& operation, ColorWord fill) {
    auto target = ops::CreateBlankLike(source, width, height);
    if (!target) {
        return nullptr;
    }
    CImageTransform engine;
    engine.SetFillColor(fill);
    engine.SetTarget(target.get());
    engine.SetSource(&source);
    return operation(engine) ? std::move(target) : nullptr;
}

// Hands a transformed picture over. A floating selection's mask goes through
// the same operation; otherwise the selection is dropped into the undo step
// and an empty mask of the new size takes its place. Flips of the whole
// picture keep the selection and record an image step.
template <class Operation>
int CommitTransformed(CommandContext& ctx, std::unique_ptr<CDibImage> result, bool keepsMaskShape,
                      const Operation& maskOperation) {
    const CDibImage* floatMask = ctx.doc.GetFloatMask();
    if (floatMask != nullptr) {
        auto mask = TransformInto(*floatMask, result->Width(), result->Height(), maskOperation, 0);
        if (!mask) {
            return 0;
        }
        ops::CommitImageAndMaskStep(ctx, std::move(result), std::move(mask));
        return 1;
    }
    if (keepsMaskShape) {
        ops::CommitImageStep(ctx, std::move(result));
        return 1;
    }
    auto mask = CreateMask(result->Width(), result->Height(), true);
    if (!mask) {
        return 0;
    }
    ops::CommitImageAndMaskStep(ctx, std::move(result), std::move(mask));
    return 1;
}

} // namespace

int RunGeometryCommand(CommandContext& ctx, int code) {
    const CDibImage* source = ctx.doc.GetImage();
    if (source == nullptr || code < kFlipHorizontal || code > kRotateRight) {
        return 0;
    }
    platform::WaitCursor wait;
    const bool turn = code == kRotateLeft || code == kRotateRight;
    const int width = turn ? source->Height() : source->Width();
    const int height = turn ? source->Width() : source->Height();
    auto result = ops::CreateResultImage(*source, width, height);
    if (!result) {
        return 0;
    }
    CImageTransform engine;
    engine.SetTarget(result.get());
    engine.SetSource(source);
    if (!Transform(engine, code)) {
        return 0;
    }
    return CommitTransformed(ctx, std::move(result), !turn,
                             [code](CImageTransform& maskEngine) { return Transform(maskEngine, code); });
}

int RunRotate(CommandContext& ctx, int degrees, bool clockwise) {
    if (degrees < 0 || degrees > 359) {
        platform::ShowMessage(platform::IDS_DEGREE_OUT_OF_RANGE,
                              platform::MB_OK | platform::MB_ICONEXCLAMATION);
        return 0;
    }
    const CDibImage* source = ctx.doc.GetImage();
    if (source == nullptr) {
        return 0;
    }
    platform::WaitCursor wait;
    const auto angle = static_cast<float>(clockwise || degrees == 0 ? degrees : 360 - degrees);
    int width = 0;
    int height = 0;
    CImageTransform::RotatedSize(source->Width(), source->Height(), angle, width, height);
    if (width > kLargestPictureSide || height > kLargestPictureSide) {
        platform::ShowMessage(platform::IDS_DISK_SPACE_NOT_ENOUGH,
                              platform::MB_OK | platform::MB_ICONEXCLAMATION);
        return 0;
    }
    auto result = ops::CreateResultImage(*source, width, height);
    if (!result) {
        return 0;
    }
    CImageTransform engine;
    engine.SetFillColor(ctx.background);
    engine.SetTarget(result.get());
    engine.SetSource(source);
    if (!engine.RotateByAngle(angle, true)) {
        return 0;
    }
    return CommitTransformed(ctx, std::move(result), false, [angle](CImageTransform& maskEngine) {
        return maskEngine.RotateByAngle(angle, false);
    });
}

int RunRescale(CommandContext& ctx, int width, int height, int dpi) {
    const CDibImage* source = ctx.doc.GetImage();
    const bool sizeInRange =
        width >= 1 && width <= kLargestPictureSide && height >= 1 && height <= kLargestPictureSide;
    if (source == nullptr || !sizeInRange || dpi < 0 || dpi > kMaxResolution) {
        return 0;
    }
    if (width == source->Width() && height == source->Height()) {
        const CDibImage* picture = ctx.doc.GetPicture();
        if (dpi == 0 || (picture->DpiX() == dpi && picture->DpiY() == dpi)) {
            return 1; // nothing to change
        }
        const int oldDpi = ctx.doc.SetResolution(dpi);
        ctx.doc.SetModifiedFlag();
        ctx.undo.RecordObjects(ctx.doc, nullptr, nullptr, 2, static_cast<std::uint16_t>(oldDpi));
        ctx.doc.UpdateAllViews(CBriselDoc::kHintRepaint);
        return 1;
    }
    platform::WaitCursor wait;
    auto result = ops::CreateResultImage(*source, width, height);
    if (!result || !ops::RescalePicture(*source, *result)) {
        return 0;
    }
    // The resolution belongs to the picture; a floating selection keeps it.
    if (dpi > 0 && ctx.doc.GetFloatImage() == nullptr) {
        result->SetResolution(static_cast<std::int16_t>(dpi), static_cast<std::int16_t>(dpi));
    }
    const CDibImage* floatMask = ctx.doc.GetFloatMask();
    auto mask = floatMask != nullptr ? ops::CreateBlankLike(*floatMask, width, height)
                                     : CreateMask(width, height, true);
    if (!mask || (floatMask != nullptr && !ops::RescaleMask(*floatMask, *mask))) {
        return 0;
    }
    ops::CommitImageAndMaskStep(ctx, std::move(result), std::move(mask));
    return 1;
}
