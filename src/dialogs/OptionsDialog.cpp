#include "dialogs/OptionsDialog.h"

#include "dialogs/NumberTriple.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

OptionsDialog::OptionsDialog(const OptionsValues& values, QWidget* parent)
    : QDialog(parent), m_quality(new NumberTriple(1, 100, values.jpegQuality)), m_display(new QComboBox),
      m_pressure(new QCheckBox(QStringLiteral("Pen Pressure Simulation"))) {
    setWindowTitle(QStringLiteral("Options"));
    auto* layout = new QVBoxLayout(this);

    auto* jpeg = new QGroupBox(QStringLiteral("JPEG"));
    auto* jpegLayout = new QVBoxLayout(jpeg);
    jpegLayout->addWidget(new QLabel(QStringLiteral("Quality (1...100) :")));
    jpegLayout->addWidget(m_quality);
    auto* scale = new QHBoxLayout;
    scale->addWidget(new QLabel(QStringLiteral("Poor")));
    scale->addStretch();
    scale->addWidget(new QLabel(QStringLiteral("Good")));
    jpegLayout->addLayout(scale);
    layout->addWidget(jpeg);

    auto* display = new QGroupBox(QStringLiteral("Display"));
    auto* displayLayout = new QFormLayout(display);
    m_display->addItems({QStringLiteral("Automatic"), QStringLiteral("True Color"),
                         QStringLiteral("65536 colors"), QStringLiteral("4096 colors")});
    m_display->setCurrentIndex(values.displayMode);
    displayLayout->addRow(QStringLiteral("Optimized for :"), m_display);
    layout->addWidget(display);

    m_pressure->setChecked(values.pressureSimulation);
    layout->addWidget(m_pressure);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &OptionsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &OptionsDialog::reject);
    layout->addWidget(buttons);
}

OptionsValues OptionsDialog::Values() const {
    return {m_quality->Value(), m_display->currentIndex(), m_pressure->isChecked()};
}

void OptionsDialog::accept() {
    if (!m_quality->InRange()) {
        platform::ShowMessage(platform::IDS_QUALITY_OUT_OF_RANGE, platform::MB_ICONEXCLAMATION);
        return;
    }
    QDialog::accept();
}
