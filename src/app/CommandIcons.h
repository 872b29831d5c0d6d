#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

// The icon of every menu command: the desktop theme's icon where the theme has
// one under the command's standard name, otherwise one drawn here, a badge in
// the colour of the command's menu with a short mark of its own.
namespace icons {

struct CommandIconLook {
    QString themeName; // empty: no standard name
    QString mark;      // the drawn badge's text
    QColor color;      // the drawn badge's colour
};

CommandIconLook LookOfCommand(int id);
QIcon ForCommand(int id);

} // namespace icons
