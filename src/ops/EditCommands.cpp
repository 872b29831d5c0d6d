#include "ops/EditCommands.h"

#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/CommandContext.h"
#include "image/DibHelpers.h"
#include "image/ImageCoordinates.h"
#include "platform/MessagePresenter.h"
#include "platform/Settings.h"
#include "platform/StringTable.h"
#include "platform/WaitCursor.h"

#include <algorithm>

namespace {

// The floating rectangle (inclusive), or an empty rectangle.
ImageRect SelectionArea(const CBriselDoc& doc) {
    if (doc.GetFloatMask() == nullptr) {
        return ImageRect{0, 0, -1, -1};
    }
    const ImageRect r = doc.GetFloatRect();
    return ImageRect{r.left, r.top, r.right - 1, r.bottom - 1};
}

ImageRect PictureArea(const CBriselDoc& doc) {
    const CDibImage* picture = doc.GetPicture();
    return picture ? ImageRect{0, 0, picture->Width() - 1, picture->Height() - 1} : ImageRect{0, 0, -1, -1};
}

void Widen(ImageRect& area, const ImageRect& more) {
    if (more.left > more.right || more.top > more.bottom) {
        return;
    }
    if (area.left > area.right || area.top > area.bottom) {
        area = more;
        return;
    }
    area = ImageRect{std::min(area.left, more.left), std::min(area.top, more.top),
                     std::max(area.right, more.right), std::max(area.bottom, more.bottom)};
}

// The area of the edit target: the floating rectangle, or the picture.
ImageRect TargetArea(const CBriselDoc& doc) {
    return doc.GetFloatImage() ? SelectionArea(doc) : PictureArea(doc);
}

int Finish(EditResult& result, const CBriselDoc& doc, const ImageRect& area) {
    result.done = 1;
    result.repaint = true;
    result.area = area;
    result.outline = doc.GetFloatMask() != nullptr;
    return 1;
}

int FillTarget(CommandContext& context, ColorWord color, EditResult& result) {
    CBriselDoc& doc = context.doc;
    CDibImage* target = doc.GetImage();
    if (target == nullptr) {
        return 0;
    }
    context.undo.RecordWithWarning(doc, 1);
    target->Clear(color);
    doc.SetModifiedFlag();
    doc.UpdateAllViews();
    return Finish(result, doc, TargetArea(doc));
}

// After the picture was replaced: both the old and the new picture's areas
// repaint and the views learn the new size.
int FinishNewPicture(CBriselDoc& doc, const ImageRect& oldArea, EditResult& result) {
    doc.SetModifiedFlag();
    doc.UpdateAllViews(CBriselDoc::kHintImageSize);
    result.imageSizeChanged = true;
    ImageRect area = oldArea;
    Widen(area, PictureArea(doc));
    return Finish(result, doc, area);
}

} // namespace

int ReadFillChoice() {
    return platform::Settings::ReadInt("Edit", "FillColor", 0);
}

void WriteFillChoice(int choice) {
    platform::Settings::WriteInt("Edit", "FillColor", choice);
}

ColorWord FillChoiceColor(const CommandContext& context, int choice) {
    switch (choice) {
    case 1:
        return context.background;
    case 2:
        return 0xFFFFFF;
    case 3:
        return 0x000000;
    default:
        return context.foreground;
    }
}

int EditClear(CommandContext& context, EditResult& result) {
    return FillTarget(context, context.background, result);
}

int EditFill(CommandContext& context, EditResult& result) {
    return EditFillWith(context, ReadFillChoice(), result);
}

int EditFillWith(CommandContext& context, int choice, EditResult& result) {
    return FillTarget(context, FillChoiceColor(context, choice), result);
}

// The whole floating rectangle becomes the picture; its mask is not applied.
int EditCrop(CommandContext& context, EditResult& result) {
    CBriselDoc& doc = context.doc;
    if (doc.GetFloatImage() == nullptr || doc.GetFloatMask() == nullptr) {
        return 0;
    }
    platform::WaitCursor wait;
    auto emptyMask = CreateMask(doc.GetFloatImage()->Width(), doc.GetFloatImage()->Height(), true);
    if (!emptyMask) {
        platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    const ImageRect oldArea = PictureArea(doc);
    context.undo.RecordWithWarning(doc, 9);
    // The views hear about the change only once the new picture is in place.
    doc.SetPicture(doc.SetFloatImage(nullptr));
    doc.SetMask(std::move(emptyMask));
    doc.DiscardFloating();
    return FinishNewPicture(doc, oldArea, result);
}

int EditSelectAll(CommandContext& context, EditResult& result) {
    CBriselDoc& doc = context.doc;
    const CDibImage* picture = doc.GetPicture();
    if (picture == nullptr) {
        return 0;
    }
    ImageRect area = SelectionArea(doc);
    context.undo.RecordWithWarning(doc, 5);
    doc.PutFloating(false);
    if (!doc.CreateFloating(0, 0, picture->Width() - 1, picture->Height() - 1, false)) {
        // The old selection is stamped and gone; the user has been told.
        Finish(result, doc, area);
        result.done = 0;
        return 0;
    }
    doc.SetFloatPosition(0, 0);
    Widen(area, SelectionArea(doc));
    return Finish(result, doc, area);
}

int EditSelectNone(CommandContext& context, EditResult& result) {
    CBriselDoc& doc = context.doc;
    const ImageRect area = SelectionArea(doc);
    context.undo.RecordWithWarning(doc, 7);
    doc.PutFloating(false);
    return Finish(result, doc, area);
}

// Everything outside the current selection becomes the selection: the work
// mask is filled, the inverted floating mask written into it, the selection
// stamped and a new one lifted.
int EditInvertSelection(CommandContext& context, EditResult& result) {
    CBriselDoc& doc = context.doc;
    CDibImage* mask = doc.GetSelectionMask();
    if (mask == nullptr) {
        return 0;
    }
    ImageRect area = SelectionArea(doc);
    context.undo.RecordWithWarning(doc, 5);
    {
        platform::WaitCursor wait;
        mask->Clear(0xFFFFFF);
    }
    doc.MergeFloatMask(true);
    doc.PutFloating(false);
    doc.FloatSelection();
    Widen(area, SelectionArea(doc));
    return Finish(result, doc, area);
}

int EditPutFloating(CommandContext& context, EditResult& result) {
    CBriselDoc& doc = context.doc;
    if (doc.GetFloatMask() == nullptr) {
        return 0;
    }
    context.undo.RecordWithWarning(doc, 4);
    doc.PutFloating(true);
    doc.SetModifiedFlag();
    return Finish(result, doc, SelectionArea(doc));
}

int EditDiscardFloating(CommandContext& context, EditResult& result) {
    CBriselDoc& doc = context.doc;
    if (doc.GetFloatMask() == nullptr) {
        return 0;
    }
    const ImageRect area = SelectionArea(doc);
    // The undo step takes the floating image and mask themselves.
    context.undo.RecordWithWarning(doc, 6);
    doc.DiscardFloating();
    return Finish(result, doc, area);
}

int EditMoveFloating(CommandContext& context, int dx, int dy, EditResult& result) {
    CBriselDoc& doc = context.doc;
    if (doc.GetFloatMask() == nullptr) {
        return 0;
    }
    ImageRect area = SelectionArea(doc);
    if (dx == 0 && dy == 0) {
        return Finish(result, doc, area);
    }
    context.undo.RecordWithWarning(doc, 3);
    doc.SetModifiedFlag();
    // Moves add up, so the position itself is kept within the coordinate limit.
    doc.SetFloatPosition(ClampCoordinate(static_cast<long long>(doc.FloatX()) + dx),
                         ClampCoordinate(static_cast<long long>(doc.FloatY()) + dy));
    doc.UpdateAllViews();
    Widen(area, SelectionArea(doc));
    return Finish(result, doc, area);
}

int EditPasteFloating(CommandContext& context, std::unique_ptr<CDibImage> image,
                      std::unique_ptr<CDibImage> mask, int x, int y, EditResult& result) {
    CBriselDoc& doc = context.doc;
    if (!image || !mask || doc.GetPicture() == nullptr) {
        return 0;
    }
    ImageRect area = SelectionArea(doc);
    context.undo.RecordWithWarning(doc, 5);
    doc.PutFloating(false);
    doc.SetFloatPosition(x, y);
    doc.SetFloatImage(std::move(image));
    doc.SetFloatMask(std::move(mask));
    doc.SetModifiedFlag();
    doc.UpdateAllViews();
    Widen(area, SelectionArea(doc));
    return Finish(result, doc, area);
}

int EditPasteAsNew(CommandContext& context, std::unique_ptr<CDibImage> image, std::unique_ptr<CDibImage> mask,
                   EditResult& result) {
    CBriselDoc& doc = context.doc;
    if (!image) {
        return 0;
    }
    // Everything is made before the document changes, so that a lack of
    // memory leaves it as it was.
    auto emptyMask = CreateMask(image->Width(), image->Height(), true);
    std::unique_ptr<CDibImage> floating;
    if (emptyMask && mask) {
        floating = DuplicateImage(image.get());
    }
    if (!emptyMask || (mask && !floating)) {
        platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    const ImageRect oldArea = PictureArea(doc);
    context.undo.Record(doc, 0);
    doc.DiscardFloating();
    if (mask) {
        image->Clear(context.background);
    }
    doc.SetPicture(std::move(image));
    doc.SetMask(std::move(emptyMask));
    doc.SetFloatPosition(0, 0);
    if (mask) {
        doc.SetFloatImage(std::move(floating));
        doc.SetFloatMask(std::move(mask));
    }
    return FinishNewPicture(doc, oldArea, result);
}
