#include "app/CommandRouter.h"

#include "app/CBriselApp.h"
#include "app/CMainFrame.h"
#include "app/CommandIcons.h"
#include "app/CommandIds.h"
#include "tools/ToolTable.h"

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
    // The undo steps a command records carry its menu text; the strokes
    // after it carry the current tool's name.
    CUndoHistory& history = m_frame.UndoHistory();
    history.BeginCommand(*m_frame.Document(), StepName(Action(id)));
    FindCommand(id)->run(targets);
    history.BeginCommand(*m_frame.Document(), tools::Label(m_frame.CurrentToolId()));
    UpdateAll();
    return true;
}

std::string CommandRouter::StepName(const QAction* action) {
    if (action == nullptr) {
        return {};
    }
    QString text = action->text();
    text.remove(QLatin1Char('&'));
    while (text.endsWith(QLatin1Char('.'))) {
        text.chop(1);
    }
    return text.trimmed().toStdString();
}

// "Undo Pen", "Redo Rotate": the table's label followed by the step's name.
void CommandRouter::ShowStepNames() {
    const CUndoHistory& history = m_frame.UndoHistory();
    const CBriselDoc* doc = m_frame.Document();
    const std::pair<int, std::string> entries[] = {
        {cmd::kUndo, history.CanUndo(doc) ? history.UndoLabel() : std::string()},
        {cmd::kRedo, history.CanRedo(doc) ? history.RedoLabel() : std::string()},
    };
    for (const auto& [id, step] : entries) {
        const CommandEntry* entry = FindCommand(id);
        QAction* action = Action(id);
        if (entry == nullptr || action == nullptr) {
            continue;
        }
        // The label as the menu shows it, with its mnemonic, kept from the
        // first time the step names are shown.
        if (!action->property("menuLabel").isValid()) {
            action->setProperty("menuLabel", action->text());
        }
        QString text = action->property("menuLabel").toString();
        if (!step.empty()) {
            text += QLatin1Char(' ') + QString::fromStdString(step).replace(QLatin1Char('&'), QLatin1String("&&"));
        }
        action->setText(text);
    }
}

void CommandRouter::UpdateAll() {
    for (const auto& [id, action] : m_actions) {
        action->setEnabled(IsEnabled(id));
        if (action->isCheckable()) {
            action->setChecked(IsChecked(id));
        }
    }
    ShowStepNames();
}
