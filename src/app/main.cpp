#include "app/CBriselApp.h"
#include "app/CMainFrame.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    QApplication qtApp(argc, argv);
    CBriselApp app;
    QStringList files = QApplication::arguments();
    files.removeFirst();
    if (!app.InitInstance(files)) {
        return 1;
    }
    CMainFrame* frame = app.MainFrame();
    frame->showMaximized();
    frame->raise();
    frame->activateWindow();
    return QApplication::exec();
}
