#pragma once

#include "app/CommandTable.h"

#include <QObject>
#include <map>
#include <string>

class CMainFrame;
class QAction;
class QWidget;

// Turns the command table into actions and carries every command to the
// object the table names (frame, current tool, document or application),
// after asking its enabling rule. Enabling and check marks are refreshed
// before a menu opens and after every state change.
class CommandRouter : public QObject {
    Q_OBJECT
public:
    explicit CommandRouter(CMainFrame& frame);

    // Creates one action per table entry, with its accelerator, on `owner`.
    void CreateActions(QWidget* owner);
    QAction* Action(int id) const;

    bool IsEnabled(int id) const;
    bool IsChecked(int id) const;
    // Runs the command when it is enabled; false otherwise.
    bool Execute(int id);
    void UpdateAll();

    // A command's menu text as the name of the undo steps it records
    // ("Rotate..." names them "Rotate").
    static std::string StepName(const QAction* action);

private:
    void ShowStepNames();
    CommandTargets TargetsFor(int id) const;
    bool TargetAvailable(const CommandEntry& entry, const CommandTargets& targets) const;

    CMainFrame& m_frame;
    std::map<int, QAction*> m_actions;
};
