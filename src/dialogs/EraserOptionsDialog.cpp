#include "dialogs/EraserOptionsDialog.h"

#include "dialogs/DialogButtons.h"
#include "dialogs/NumberTriple.h"
#include "platform/MessagePresenter.h"
#include "platform/Settings.h"
#include "platform/StringTable.h"

#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

namespace {
const char* const kSection = "Eraser";
} // namespace

EraserOptionsDialog::EraserOptionsDialog(QWidget* parent)
    : QDialog(parent), m_all(new QRadioButton(QStringLiteral("Erase all colors"))),
      m_foregroundOnly(new QRadioButton(QStringLiteral("Erase foreground color only"))),
      m_similarity(new NumberTriple(0, 255, platform::Settings::ReadInt(kSection, "Red", 0))) {
    setWindowTitle(QStringLiteral("Eraser Options"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_all);
    layout->addWidget(m_foregroundOnly);
    auto* label = new QLabel(QStringLiteral("Color Similarity : "));
    layout->addWidget(label);
    layout->addWidget(m_similarity);
    layout->addWidget(new QLabel(QStringLiteral("(0-255)")));
    AddOkCancelButtons(this, layout);

    const bool foregroundOnly = platform::Settings::ReadInt(kSection, "Eraser Type", 0) == 1;
    (foregroundOnly ? m_foregroundOnly : m_all)->setChecked(true);
    m_similarity->setEnabled(foregroundOnly);
    connect(m_foregroundOnly, &QRadioButton::toggled, m_similarity, &QWidget::setEnabled);
}

void EraserOptionsDialog::accept() {
    // A disabled field cannot be corrected, so only a field in use is checked.
    if (m_foregroundOnly->isChecked() && !m_similarity->InRange()) {
        platform::ShowMessage(platform::IDS_SIMILARITY_OUT_OF_RANGE, platform::MB_ICONEXCLAMATION);
        return;
    }
    platform::Settings::WriteInt(kSection, "Eraser Type", m_foregroundOnly->isChecked() ? 1 : 0);
    platform::Settings::WriteInt(kSection, "Red", std::clamp(m_similarity->Value(), 0, 255));
    QDialog::accept();
}

void EraserOptionsDialog::Open(QWidget* parent) {
    EraserOptionsDialog dialog(parent);
    dialog.exec();
}
