#include "app/CBriselApp.h"
#include "app/CMainFrame.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    QApplication qtApp(argc, argv);
    CBriselApp app;
    if (!app.InitInstance()) {
        return 1;
    }
    app.MainFrame()->show();
    return QApplication::exec();
}
