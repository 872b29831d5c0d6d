#pragma once

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <functional>

// Runs `act` on the modal dialog that the next exec() opens.
inline void WithNextDialog(std::function<void(QDialog*)> act) {
    QTimer::singleShot(0, qApp, [act] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        act(dialog);
    });
}
