#pragma once

class CommandRouter;
class QMenuBar;
class QMenu;

// Builds the menu bar from the command table: menus and submenus in the
// order the table lists them, with its separators. Every menu refreshes the
// enabling of the commands just before it opens.
class MenuBuilder {
public:
    static void Build(QMenuBar& bar, CommandRouter& router);
    // The submenu titled `title` under the top-level menu `menu`, or null.
    static QMenu* FindSubmenu(QMenuBar& bar, const char* menu, const char* title);
};
