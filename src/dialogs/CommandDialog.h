#pragma once

#include "image/CommandContext.h"

#include <QDialog>

#include <vector>

class LivePreview;
class NumberTriple;
class QBoxLayout;
class QFormLayout;
class QPushButton;
struct OpsCommand;

// The frame every image command's dialog shares: its own controls above OK
// and Cancel (and "Preview" where the dialog has one), validation before OK,
// and, for dialogs that show their effect, the live preview in the document:
// OK keeps the previewed result with one undo step, Cancel and closing the
// window put the picture back exactly.
class CommandDialog : public QDialog {
    Q_OBJECT
public:
    explicit CommandDialog(const QString& title, QWidget* parent = nullptr);
    ~CommandDialog() override;

    // The values the command runs with, in the order of its parameters.
    virtual std::vector<int> CommandValues() const { return {}; }

    QPushButton* OkButton() const { return m_ok; }
    QPushButton* PreviewButton() const { return m_previewButton; }
    LivePreview* Preview() const { return m_preview; }

    void accept() override;
    void reject() override;
    // The first field that takes typing, where the focus goes on opening.
    QWidget* FirstField() const;

    // Shows `dialog`; on OK runs `command` with the dialog's values. 1 when the
    // command ran.
    static int ExecAndRun(CommandDialog& dialog, CommandContext& ctx, const OpsCommand& command);

protected:
    // The area above the buttons for the dialog's own controls.
    QBoxLayout* Body() const { return m_body; }
    // A number kept in step three ways whose typing clamps to the range.
    NumberTriple* AddNumber(QFormLayout* form, const QString& label, int minimum, int maximum, int value,
                            int pageStep);
    QPushButton* AddPreviewButton();
    // Opens the document preview; 0 (after the message) when it cannot start.
    int StartPreview(CommandContext& ctx);

    void showEvent(QShowEvent* event) override;

    // Checked before OK closes the dialog; shows its own message when false.
    virtual bool Validate() { return true; }
    // Runs before a previewing dialog keeps its result.
    virtual void BeforeFinish() {}

private:
    QBoxLayout* m_body;
    QPushButton* m_ok;
    QPushButton* m_cancel;
    QPushButton* m_previewButton = nullptr;
    LivePreview* m_preview = nullptr;
};
