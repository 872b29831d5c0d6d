#pragma once

#include "app/CBriselApp.h"
#include "app/CMainFrame.h"

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <functional>

// Runs `act` on the modal dialog that the next exec() opens.
inline void WithNextDialog(std::function<void(QDialog*)> act) {
    QTimer::singleShot(0, qApp, [act] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        act(dialog);
    });
}

// Starts `app` and shows its main frame at the given size on the offscreen
// screen; null when either fails.
inline CMainFrame* ShowMainFrame(CBriselApp& app, int width, int height) {
    if (!app.InitInstance()) {
        return nullptr;
    }
    CMainFrame* frame = app.MainFrame();
    frame->resize(width, height);
    frame->show();
    return QTest::qWaitForWindowExposed(frame) ? frame : nullptr;
}
