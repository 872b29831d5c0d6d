#include "dialogs/CommandDialog.h"

#include "dialogs/LivePreview.h"
#include "dialogs/NumberTriple.h"
#include "ops/OpsCommandTable.h"

#include <QAbstractSpinBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QFormLayout>
#include <QPushButton>
#include <QVBoxLayout>

QWidget* CommandDialog::FirstField() const {
    for (QWidget* widget = nextInFocusChain(); widget != this; widget = widget->nextInFocusChain()) {
        const bool typed = qobject_cast<QLineEdit*>(widget) != nullptr || qobject_cast<QAbstractSpinBox*>(widget) != nullptr;
        if (typed && widget->isEnabled() && widget->isVisibleTo(this) && isAncestorOf(widget)) {
            return widget;
        }
    }
    return nullptr;
}

// Typing goes to the first number at once, selected so that it is replaced.
void CommandDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (QWidget* field = FirstField()) {
        field->setFocus(Qt::TabFocusReason);
        if (auto* edit = qobject_cast<QLineEdit*>(field)) {
            edit->selectAll();
        }
    }
}

CommandDialog::CommandDialog(const QString& title, QWidget* parent)
    : QDialog(parent), m_body(new QVBoxLayout), m_ok(nullptr), m_cancel(nullptr) {
    setWindowTitle(title);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(m_body);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    m_cancel = buttons->button(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &CommandDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CommandDialog::reject);
    layout->addWidget(buttons);
}

// A dialog destroyed while its preview is open (never closed) leaves the
// picture as it was.
CommandDialog::~CommandDialog() = default;

NumberTriple* CommandDialog::AddNumber(QFormLayout* form, const QString& label, int minimum, int maximum,
                                       int value, int pageStep) {
    auto* triple = new NumberTriple(minimum, maximum, value);
    triple->SetClampTyping(true);
    triple->SetPageStep(pageStep);
    form->addRow(label, triple);
    return triple;
}

QPushButton* CommandDialog::AddPreviewButton() {
    if (m_previewButton == nullptr) {
        m_previewButton = new QPushButton(QStringLiteral("Preview"));
        m_previewButton->setAutoDefault(false);
        m_body->addWidget(m_previewButton, 0, Qt::AlignRight);
    }
    return m_previewButton;
}

int CommandDialog::StartPreview(CommandContext& ctx) {
    m_preview = new LivePreview(ctx, this);
    return m_preview->Begin();
}

void CommandDialog::accept() {
    for (NumberTriple* number : findChildren<NumberTriple*>()) {
        number->CommitTyping();
    }
    if (!Validate()) {
        return;
    }
    if (m_preview != nullptr && m_preview->IsOpen()) {
        BeforeFinish();
        m_preview->Finish();
    }
    QDialog::accept();
}

void CommandDialog::reject() {
    if (m_preview != nullptr) {
        m_preview->Cancel();
    }
    QDialog::reject();
}

int CommandDialog::ExecAndRun(CommandDialog& dialog, CommandContext& ctx, const OpsCommand& command) {
    if (dialog.exec() != QDialog::Accepted) {
        return 0;
    }
    const std::vector<int> values = dialog.CommandValues();
    std::vector<int> all;
    for (std::size_t i = 0; i < command.parameters.size(); ++i) {
        all.push_back(i < values.size() ? values[i] : command.parameters[i].defaultValue);
    }
    return command.run(ctx, all, static_cast<int>(values.size()));
}
