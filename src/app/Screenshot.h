#pragma once

#include <QString>
#include <QStringList>

// "--screenshot FILE": once the window has settled, the screen is saved as a
// PNG and the program ends. Used by the screenshot script and its test.
class Screenshot {
public:
    // Removes the option and its file from `arguments`; the file, or empty.
    static QString TakeOption(QStringList& arguments);
    static void Schedule(const QString& path, int delayMs = 1200);
};
