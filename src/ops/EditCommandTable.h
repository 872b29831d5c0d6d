#pragma once

#include "ops/EditCommands.h"

#include <span>

class CBriselDoc;

// When a command of the table may run.
enum class EditEnable {
    Always,          // with an open document
    SelectionExists, // the document has a floating mask
};

// One Edit menu command: menu id, menu label, core handler, enabling rule and
// the undo kind it records. The menus and the command-line tool read this
// table; nothing else lists these commands.
struct EditCommand {
    int id;
    const char* label;
    int (*run)(CommandContext& context, EditResult& result);
    EditEnable enable;
    int undoKind;
};

std::span<const EditCommand> EditCommands();
const EditCommand* FindEditCommand(int id);
bool IsEditCommandEnabled(const EditCommand& command, const CBriselDoc* doc);
