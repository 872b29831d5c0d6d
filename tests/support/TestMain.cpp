// Test entry point shared by the suites: settings go to a private temporary
// folder so that no test reads or writes the user's own configuration.
#include "platform/Settings.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#ifdef TAMRICK_WINDOW_TESTS
#include <QApplication>
#endif

int main(int argc, char** argv) {
#ifdef TAMRICK_WINDOW_TESTS
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
#endif
    QTemporaryDir settingsFolder;
    platform::Settings::UseFolder(settingsFolder.path().toStdString());
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
