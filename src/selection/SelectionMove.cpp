#include "selection/SelectionMove.h"

#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/CommandContext.h"
#include "image/ImageCoordinates.h"
#include "platform/HeapBlock.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

#include <algorithm>

namespace {

// Copies the picture's pixels under `target` placed at (x, y); the part
// outside the picture is left as it is.
void CopyPictureUnder(const CDibImage& picture, CDibImage& target, int x, int y, std::uint8_t* span) {
    const int left = std::max(x, 0);
    const int right = std::min(x + target.Width(), picture.Width()) - 1;
    const int top = std::max(y, 0);
    const int bottom = std::min(y + target.Height(), picture.Height()) - 1;
    for (int row = top; left <= right && row <= bottom; ++row) {
        picture.GetSpan(left, right, row, span);
        target.PutSpan(left - x, right - x, row - y, span);
    }
}

} // namespace

int MoveSelectionOutline(CommandContext& context, int dx, int dy) {
    CBriselDoc& doc = context.doc;
    const CDibImage* mask = doc.GetFloatMask();
    if (mask == nullptr || doc.GetFloatImage() == nullptr || doc.GetPicture() == nullptr ||
        (dx == 0 && dy == 0)) {
        return 0;
    }
    const int x = ClampCoordinate(static_cast<long long>(doc.FloatX()) + dx);
    const int y = ClampCoordinate(static_cast<long long>(doc.FloatY()) + dy);
    // Everything that can fail is had before the picture changes.
    CBriselDoc::ImagePtr pickedUp = doc.CopyPictureRect(x, y, x + mask->Width() - 1, y + mask->Height() - 1);
    if (!pickedUp) {
        return 0;
    }
    platform::HeapBlock span = platform::HeapBlock::Allocate(doc.GetPicture()->RowBytes() + 4);
    if (!span) {
        platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    const bool undoable = context.undo.RecordWithWarning(doc, 8) != 0;
    doc.PutFloating(true);
    // The stamp may have changed pixels under the new place.
    CopyPictureUnder(*doc.GetPicture(), *pickedUp, x, y, span.data());
    CBriselDoc::ImagePtr old = doc.SetFloatImage(std::move(pickedUp));
    if (undoable) {
        context.undo.AdoptFloatImage(std::move(old));
    }
    doc.SetFloatPosition(x, y);
    doc.SetModifiedFlag();
    doc.UpdateAllViews();
    return 1;
}
