// Test entry point shared by the suites: settings go to a private temporary
// folder so that no test reads or writes the user's own configuration.
#include "platform/Settings.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#ifdef TAMRICK_WINDOW_TESTS
#include <QApplication>
#endif

#ifdef TAMRICK_WINDOW_TESTS
// The window tests run on one known screen: Qt's offscreen platform at one
// device pixel per logical pixel, in Qt's own style, whatever the desktop the
// tests are started from has configured for its screens and theme.
static void UseTheTestScreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    for (const char* name : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_AUTO_SCREEN_SCALE_FACTOR",
                             "QT_ENABLE_HIGHDPI_SCALING", "QT_FONT_DPI", "QT_STYLE_OVERRIDE",
                             "QT_QPA_PLATFORMTHEME", "QT_SCALE_FACTOR_ROUNDING_POLICY"}) {
        qunsetenv(name);
    }
}
#endif

int main(int argc, char** argv) {
#ifdef TAMRICK_WINDOW_TESTS
    UseTheTestScreen();
    QApplication app(argc, argv);
#endif
    QTemporaryDir settingsFolder;
    platform::Settings::UseFolder(settingsFolder.path().toStdString());
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
