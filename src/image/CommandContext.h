#pragma once

#include "image/DibTypes.h"

class CBriselDoc;
class CUndoHistory;

// What an editing command works with: the document, the undo history and
// the current colours. The window layer builds one from the main frame's
// state; the command-line tool builds one from its options. Commands that
// change pixels take this, so menus, tools, the CLI and tests run the same code.
struct CommandContext {
    CBriselDoc& doc;
    CUndoHistory& undo;
    ColorWord foreground = 0x00FF0000; // pure blue
    ColorWord background = 0x00FFFFFF; // white
};
