#include "app/MenuBuilder.h"

#include "app/CommandRouter.h"
#include "app/CommandTable.h"
#include "app/Mnemonics.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <map>
#include <string>

namespace {
QMenu* ChildMenu(QWidget* parent, const QString& title) {
    for (QMenu* menu : parent->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (QString(menu->title()).remove(QLatin1Char('&')) == title) {
            return menu;
        }
    }
    return nullptr;
}
} // namespace

void MenuBuilder::Build(QMenuBar& bar, CommandRouter& router) {
    std::map<std::string, QMenu*> menus;
    for (const CommandEntry& entry : CommandTable()) {
        if (entry.menu == nullptr) {
            continue;
        }
        QMenu*& top = menus[entry.menu];
        if (top == nullptr) {
            top = bar.addMenu(QString::fromUtf8(entry.menu));
            QObject::connect(top, &QMenu::aboutToShow, &router, &CommandRouter::UpdateAll);
        }
        QMenu* target = top;
        if (entry.submenu != nullptr) {
            const std::string key = std::string(entry.menu) + "/" + entry.submenu;
            QMenu*& sub = menus[key];
            if (sub == nullptr) {
                if (entry.separatorBefore) {
                    top->addSeparator();
                }
                sub = top->addMenu(QString::fromUtf8(entry.submenu));
                QObject::connect(sub, &QMenu::aboutToShow, &router, &CommandRouter::UpdateAll);
            }
            target = sub;
        } else if (entry.separatorBefore) {
            top->addSeparator();
        }
        target->addAction(router.Action(entry.id));
    }
    mnemonics::ApplyToMenuTree(bar);
}

QMenu* MenuBuilder::FindSubmenu(QMenuBar& bar, const char* menu, const char* title) {
    QMenu* top = ChildMenu(&bar, QString::fromUtf8(menu));
    return top ? ChildMenu(top, QString::fromUtf8(title)) : nullptr;
}
