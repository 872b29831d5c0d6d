#include "ops/EditCommandTable.h"

#include "image/CBriselDoc.h"

namespace {
const EditCommand kEditCommands[] = {
    {57632, "Clear", &EditClear, EditEnable::SelectionExists, 1},
    {32857, "Crop", &EditCrop, EditEnable::SelectionExists, 9},
    {32858, "&Fill...", &EditFill, EditEnable::Always, 1},
    {57642, "Select All", &EditSelectAll, EditEnable::Always, 5},
    {32859, "Select None", &EditSelectNone, EditEnable::SelectionExists, 7},
    {32860, "Invert Selection", &EditInvertSelection, EditEnable::SelectionExists, 5},
    {32861, "Put Floating", &EditPutFloating, EditEnable::SelectionExists, 4},
    {32862, "Discard Floating", &EditDiscardFloating, EditEnable::SelectionExists, 6},
};
} // namespace

std::span<const EditCommand> EditCommands() {
    return kEditCommands;
}

const EditCommand* FindEditCommand(int id) {
    for (const EditCommand& command : kEditCommands) {
        if (command.id == id) {
            return &command;
        }
    }
    return nullptr;
}

bool IsEditCommandEnabled(const EditCommand& command, const CBriselDoc* doc) {
    if (doc == nullptr || doc->GetPicture() == nullptr) {
        return false;
    }
    return command.enable == EditEnable::Always || doc->GetFloatMask() != nullptr;
}
