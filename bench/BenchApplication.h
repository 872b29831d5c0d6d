#pragma once

#include "platform/Settings.h"

#include <QApplication>
#include <QTemporaryDir>

#include <cstdlib>

// QPainter, the view windows and the settings store want an application
// object; the offscreen platform keeps the benches runnable without a
// display, and a private settings folder keeps the user's own untouched.
inline void EnsureBenchApplication() {
    static int argc = 1;
    static char name[] = "bench";
    static char* argv[] = {name, nullptr};
    if (QGuiApplication::instance() != nullptr) {
        return;
    }
    if (std::getenv("QT_QPA_PLATFORM") == nullptr) {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    static QApplication app(argc, argv);
    static QTemporaryDir settings;
    platform::Settings::UseFolder(settings.path().toStdString());
}
