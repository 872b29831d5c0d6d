#pragma once

#include "app/Accelerator.h"

#include <vector>

class CMainFrame;
class CBriselView;
class CBriselDoc;
class CBriselApp;
class CDocumentFiles;

// The objects a command can be routed to.
enum class CommandTarget { Frame, View, Document, Application };

struct CommandTargets {
    int id;
    CMainFrame& frame;
    CBriselView* view;
    CBriselDoc* doc;
    CBriselApp* app;
    CDocumentFiles* files; // the document's file commands
};

// One command: where it shows, how it is called, who handles it and when it
// is available. Menus, the accelerators, the router and the tests all read
// this one table. A command without `run` is shown but stays disabled.
struct CommandEntry {
    int id;
    const char* menu;    // top-level menu, nullptr for commands without an entry
    const char* submenu; // nullptr for entries directly in the menu
    const char* label;
    Accelerator accelerator; // nullptr for none
    CommandTarget target;
    void (*run)(CommandTargets&);
    bool (*enabled)(const CommandTargets&); // nullptr: always available
    bool (*checked)(const CommandTargets&); // nullptr: not a check item
    bool separatorBefore;
};

const std::vector<CommandEntry>& CommandTable();
const CommandEntry* FindCommand(int id);
