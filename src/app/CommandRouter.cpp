#include "app/CommandRouter.h"

#include "app/CBriselApp.h"
#include "app/CMainFrame.h"
#include "app/CommandIcons.h"

#include <QAction>
#include <QKeySequence>
#include <QWidget>

CommandRouter::CommandRouter(CMainFrame& frame) : QObject(&frame), m_frame(frame) {}

void CommandRouter::CreateActions(QWidget* owner) {
    for (const CommandEntry& entry : CommandTable()) {
        auto* action = new QAction(QString::fromUtf8(entry.label), owner);
        const QList<QKeySequence> keys = entry.accelerator.Sequences();
        if (!keys.isEmpty()) {
            action->setShortcuts(keys);
            action->setShortcutContext(Qt::WindowShortcut);
        }
        if (entry.label[0] != '\0') {
            action->setIcon(icons::ForCommand(entry.id));
        }
        action->setCheckable(entry.checked != nullptr);
        action->setData(entry.id);
        const int id = entry.id;
        connect(action, &QAction::triggered, this, [this, id] { Execute(id); });
        owner->addAction(action);
        m_actions[id] = action;
    }
}

QAction* CommandRouter::Action(int id) const {
    const auto found = m_actions.find(id);
    return found == m_actions.end() ? nullptr : found->second;
}

CommandTargets CommandRouter::TargetsFor(int id) const {
    CBriselApp* app = m_frame.App();
    return CommandTargets{id, m_frame, m_frame.View(), m_frame.Document(), app, app ? app->Files() : nullptr};
}

bool CommandRouter::TargetAvailable(const CommandEntry& entry, const CommandTargets& targets) const {
    switch (entry.target) {
    case CommandTarget::View:
        return targets.view != nullptr;
    case CommandTarget::Document:
        return targets.doc != nullptr && targets.files != nullptr;
    case CommandTarget::Application:
        return targets.app != nullptr;
    case CommandTarget::Frame:
        break;
    }
    return true;
}

bool CommandRouter::IsEnabled(int id) const {
    const CommandEntry* entry = FindCommand(id);
    if (entry == nullptr || entry->run == nullptr) {
        return false;
    }
    const CommandTargets targets = TargetsFor(id);
    return TargetAvailable(*entry, targets) && (entry->enabled == nullptr || entry->enabled(targets));
}

bool CommandRouter::IsChecked(int id) const {
    const CommandEntry* entry = FindCommand(id);
    return entry != nullptr && entry->checked != nullptr && entry->checked(TargetsFor(id));
}

bool CommandRouter::Execute(int id) {
    if (!IsEnabled(id)) {
        return false;
    }
    CommandTargets targets = TargetsFor(id);
    FindCommand(id)->run(targets);
    UpdateAll();
    return true;
}

void CommandRouter::UpdateAll() {
    for (const auto& [id, action] : m_actions) {
        action->setEnabled(IsEnabled(id));
        if (action->isCheckable()) {
            action->setChecked(IsChecked(id));
        }
    }
}
