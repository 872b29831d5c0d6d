#include "dialogs/CloneOptionsDialog.h"

#include "dialogs/DialogButtons.h"
#include "platform/Settings.h"

#include <QCheckBox>
#include <QVBoxLayout>

namespace {
constexpr const char* kSection = "PaintClone";
constexpr const char* kAligned = "Aligned";
} // namespace

CloneOptionsDialog::CloneOptionsDialog(QWidget* parent)
    : QDialog(parent), m_aligned(new QCheckBox(QStringLiteral("Aligned"))) {
    setWindowTitle(QStringLiteral("Clone Stamp Options"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_aligned);
    m_aligned->setChecked(ReadAligned());
    AddOkCancelButtons(this, layout);
}

bool CloneOptionsDialog::ReadAligned() {
    return platform::Settings::ReadInt(kSection, kAligned, 1) != 0;
}

void CloneOptionsDialog::Open(QWidget* parent) {
    CloneOptionsDialog dialog(parent);
    dialog.exec();
}

void CloneOptionsDialog::accept() {
    platform::Settings::WriteInt(kSection, kAligned, m_aligned->isChecked() ? 1 : 0);
    QDialog::accept();
}
