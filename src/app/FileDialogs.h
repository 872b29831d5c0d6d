#pragma once

#include <QString>

class QWidget;

// The program's own Open and Save dialogs (Qt's dialog, not the desktop's):
// detail or list view from the "FileViewMode" setting, the last folder
// remembered in "OpenFolder".
class FileDialogs {
public:
    static QString OpenFilter();
    static QString SaveFilters();
    // The chosen path, or empty on Cancel.
    static QString AskOpenPath(QWidget* parent);
    static QString AskSavePath(QWidget* parent, const QString& currentPath);
};
