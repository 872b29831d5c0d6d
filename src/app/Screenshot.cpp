#include "app/Screenshot.h"

#include <QApplication>
#include <QPixmap>
#include <QScreen>
#include <QTimer>
#include <cstdio>

QString Screenshot::TakeOption(QStringList& arguments) {
    const qsizetype index = arguments.indexOf(QStringLiteral("--screenshot"));
    if (index < 0 || index + 1 >= arguments.size()) {
        return {};
    }
    const QString path = arguments.at(index + 1);
    arguments.remove(index, 2);
    return path;
}

void Screenshot::Schedule(const QString& path, int delayMs) {
    QTimer::singleShot(delayMs, qApp, [path] {
        QScreen* screen = QGuiApplication::primaryScreen();
        const bool saved = screen != nullptr && screen->grabWindow(0).save(path, "PNG");
        if (!saved) {
            std::fprintf(stderr, "tamrick: could not save the screenshot to %s\n", qPrintable(path));
        }
        QApplication::exit(saved ? 0 : 1);
    });
}
