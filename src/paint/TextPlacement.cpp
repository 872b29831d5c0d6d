#include "paint/TextPlacement.h"

#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/CommandContext.h"
#include "image/DibHelpers.h"
#include "ops/EditCommands.h"
#include "paint/TextGlyphs.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"
#include "platform/WaitCursor.h"

#include <algorithm>

namespace {

// The foreground-coloured pixels of the text's floating selection.
std::unique_ptr<CDibImage> SolidImage(const CDibImage& picture, int width, int height, ColorWord color) {
    BitmapInfoHeader header;
    InitDibHeader(header, width, height, 24, picture.DpiX(), picture.DpiY());
    auto image = std::make_unique<CDibImage>();
    if (!image->Create(&header, nullptr)) {
        return nullptr;
    }
    image->Clear(color);
    return image;
}

ImageRect Union(const ImageRect& a, const ImageRect& b) {
    if (a.right < a.left) {
        return b;
    }
    return ImageRect{std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                     std::max(a.bottom, b.bottom)};
}

// The floating rectangle, inclusive, or an empty one.
ImageRect FloatingArea(const CBriselDoc& doc) {
    if (doc.GetFloatMask() == nullptr) {
        return ImageRect{0, 0, -1, -1};
    }
    const ImageRect r = doc.GetFloatRect();
    return ImageRect{r.left, r.top, r.right - 1, r.bottom - 1};
}

// Empty text places nothing but still ends the floating selection the text
// would have replaced: it is put down as one undo step of kind 5. A floating
// selection without width cannot exist, so none is left.
int PutDownSelectionOnly(CommandContext& context, EditResult& result) {
    CBriselDoc& doc = context.doc;
    const ImageRect oldArea = FloatingArea(doc);
    if (oldArea.right < oldArea.left) {
        return 0;
    }
    context.undo.RecordWithWarning(doc, 5);
    doc.PutFloating(false);
    doc.UpdateAllViews();
    result.done = 1;
    result.repaint = true;
    result.area = oldArea;
    result.outline = false;
    return 1;
}

} // namespace

int PlaceText(CommandContext& context, const TextFont& font, const std::string& text, int x, int y,
              EditResult& result) {
    CBriselDoc& doc = context.doc;
    const CDibImage* picture = doc.GetPicture();
    if (picture == nullptr) {
        return 0;
    }
    if (text.empty()) {
        return PutDownSelectionOnly(context, result);
    }
    TextGlyphs glyphs;
    if (!glyphs.SetFont(font)) {
        return 0;
    }
    platform::WaitCursor wait;
    const int width = glyphs.Width(text);
    const int height = glyphs.Height();
    std::unique_ptr<CDibImage> image;
    std::unique_ptr<CDibImage> mask;
    if (width > 0 && height > 0 && width <= kLargestPictureSide && height <= kLargestPictureSide) {
        image = SolidImage(*picture, width, height, context.foreground);
        mask = image ? glyphs.RenderMask(text, width, height) : nullptr;
    }
    if (!mask) {
        platform::ShowMessage(platform::IDS_DISK_SPACE_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
        return 0;
    }
    const ImageRect oldArea = FloatingArea(doc);
    context.undo.RecordWithWarning(doc, 5);
    doc.PutFloating(false);
    doc.SetFloatImage(std::move(image));
    doc.SetFloatMask(std::move(mask));
    doc.SetFloatPosition(x, y);
    doc.SetModifiedFlag();
    doc.UpdateAllViews();
    result.done = 1;
    result.repaint = true;
    result.area = Union(oldArea, FloatingArea(doc));
    result.outline = true;
    return 1;
}
