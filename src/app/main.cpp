#include "app/AppManual.h"
#include "app/CBriselApp.h"
#include "app/CMainFrame.h"
#include "app/Screenshot.h"

#include <QApplication>
#include <QScreen>

int main(int argc, char* argv[]) {
    if (const int status = RunManualOption(argc, argv); status >= 0) {
        return status;
    }
    QApplication qtApp(argc, argv);
    CBriselApp app;
    QStringList files = QApplication::arguments();
    files.removeFirst();
    const QString screenshot = Screenshot::TakeOption(files);
    if (!app.InitInstance()) {
        return 1;
    }
    CMainFrame* frame = app.MainFrame();
    // Without a window manager maximising does nothing, so start at full size.
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        frame->setGeometry(screen->availableGeometry());
    }
    frame->showMaximized();
    frame->raise();
    frame->activateWindow();
    // Opened once the window has its size, so that a large picture is fitted to it.
    if (!files.isEmpty()) {
        app.OpenDocumentFile(files.first());
    }
    if (!screenshot.isEmpty()) {
        Screenshot::Schedule(screenshot);
    }
    return QApplication::exec();
}
