#include "ops/CommandHandOver.h"

#include "image/CBriselDoc.h"
#include "image/CDibImage.h"
#include "image/CUndoHistory.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

namespace ops {

std::unique_ptr<CDibImage> CreateBlankLike(const CDibImage& like, int width, int height) {
    BitmapInfoHeader header = *like.Header();
    header.biWidth = width;
    header.biHeight = height;
    header.biSizeImage = 0;
    auto image = std::make_unique<CDibImage>();
    if (!image->Create(&header, like.Palette())) {
        return nullptr;
    }
    return image;
}

std::unique_ptr<CDibImage> CreateResultImage(const CDibImage& like, int width, int height) {
    auto image = CreateBlankLike(like, width, height);
    if (!image) {
        platform::ShowMessage(platform::IDS_DISK_SPACE_NOT_ENOUGH,
                              platform::MB_OK | platform::MB_ICONEXCLAMATION);
    }
    return image;
}

void CommitImageStep(CommandContext& ctx, std::unique_ptr<CDibImage> result) {
    auto old = ctx.doc.SetImage(std::move(result));
    ctx.doc.SetModifiedFlag();
    ctx.undo.RecordObjects(ctx.doc, std::move(old), nullptr, 1, 0);
    ctx.doc.UpdateAllViews(CBriselDoc::kHintRepaint);
}

void CommitImageAndMaskStep(CommandContext& ctx, std::unique_ptr<CDibImage> result,
                            std::unique_ptr<CDibImage> mask) {
    auto oldImage = ctx.doc.SetImage(std::move(result));
    auto oldMask = ctx.doc.GetFloatMask() != nullptr ? ctx.doc.SetFloatMask(std::move(mask))
                                                     : ctx.doc.SetMask(std::move(mask));
    ctx.doc.SetModifiedFlag();
    ctx.undo.RecordObjects(ctx.doc, std::move(oldImage), std::move(oldMask), 10, 0);
    ctx.doc.UpdateAllViews(CBriselDoc::kHintImageSize);
}

} // namespace ops
