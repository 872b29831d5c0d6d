#include "dialogs/HueOptionsDialog.h"

#include "dialogs/DialogButtons.h"
#include "platform/Settings.h"

#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {
constexpr const char* kSection = "PaintHue";
constexpr const char* kUseColor = "UseColor";
} // namespace

HueOptionsDialog::HueOptionsDialog(QWidget* parent)
    : QDialog(parent), m_hueOnly(new QRadioButton(QStringLiteral("Change hue only"))),
      m_hueAndSaturation(new QRadioButton(QStringLiteral("Change hue and saturation"))) {
    setWindowTitle(QStringLiteral("Hue Options"));
    auto* layout = new QVBoxLayout(this);
    auto* group = new QGroupBox(QStringLiteral("The pen gives the foreground color's :"));
    auto* groupLayout = new QVBoxLayout(group);
    groupLayout->addWidget(m_hueOnly);
    groupLayout->addWidget(m_hueAndSaturation);
    layout->addWidget(group);
    (ReadUseColor() ? m_hueAndSaturation : m_hueOnly)->setChecked(true);

    AddOkCancelButtons(this, layout);
}

bool HueOptionsDialog::ReadUseColor() {
    return platform::Settings::ReadInt(kSection, kUseColor, 0) != 0;
}

void HueOptionsDialog::Open(QWidget* parent) {
    HueOptionsDialog dialog(parent);
    dialog.exec();
}

void HueOptionsDialog::accept() {
    platform::Settings::WriteInt(kSection, kUseColor, m_hueAndSaturation->isChecked() ? 1 : 0);
    QDialog::accept();
}
