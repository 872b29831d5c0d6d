#pragma once

#include "image/DibTypes.h"

#include <memory>

struct CommandContext;
class CDibImage;

// What an edit command did, for the window layer to follow up: the image area
// to repaint (inclusive, in picture coordinates), whether the picture's size
// changed, and whether the selection outline should run afterwards.
struct EditResult {
    int done = 0;
    bool repaint = false;
    ImageRect area{0, 0, -1, -1};
    bool imageSizeChanged = false;
    bool outline = false;
};

// The fill choices of "&Fill..." ("Edit"/"FillColor"): 0 foreground,
// 1 background, 2 white, 3 black.
ColorWord FillChoiceColor(const CommandContext& context, int choice);
int ReadFillChoice();
void WriteFillChoice(int choice);

// The Edit menu's commands on the document, each opening its undo step first
// (kinds in brackets). When the undo snapshot cannot be taken the user is told
// and the command goes on without undo.
int EditClear(CommandContext& context, EditResult& result); // 1: the edit target to the background
int EditFill(CommandContext& context, EditResult& result);  // 1: the edit target to the fill choice
int EditFillWith(CommandContext& context, int choice, EditResult& result);
int EditCrop(CommandContext& context, EditResult& result); // 9: the floating rectangle becomes the picture
int EditSelectAll(CommandContext& context, EditResult& result);       // 5
int EditSelectNone(CommandContext& context, EditResult& result);      // 7: stamps the selection and ends it
int EditInvertSelection(CommandContext& context, EditResult& result); // 5
int EditPutFloating(CommandContext& context, EditResult& result);     // 4: stamps and keeps floating
int EditDiscardFloating(CommandContext& context, EditResult& result); // 6: drops the floating pixels
// Paste: the current selection is stamped and ended, and `image` with `mask`
// floats at (x, y), the view's top-left visible pixel (5).
int EditPasteFloating(CommandContext& context, std::unique_ptr<CDibImage> image,
                      std::unique_ptr<CDibImage> mask, int x, int y, EditResult& result);
// The drag of the floating pixels by (dx, dy) image pixels (3).
int EditMoveFloating(CommandContext& context, int dx, int dy, EditResult& result);
// Paste as New: the pasted picture replaces the document's picture and the
// undo history is emptied (0). With a clipboard mask the picture floats, masked,
// over a background-coloured picture of its own size; without one (`mask`
// null) it simply becomes the picture. Nothing changes when memory is short.
int EditPasteAsNew(CommandContext& context, std::unique_ptr<CDibImage> image, std::unique_ptr<CDibImage> mask,
                   EditResult& result);
