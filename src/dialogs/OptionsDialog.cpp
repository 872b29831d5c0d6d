#include "dialogs/OptionsDialog.h"

#include "dialogs/DialogButtons.h"
#include "dialogs/NumberTriple.h"
#include "formats/LoadLimits.h"
#include "image/UndoLimits.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

OptionsDialog::OptionsDialog(const OptionsValues& values, QWidget* parent)
    : QDialog(parent), m_quality(new NumberTriple(1, 100, values.jpegQuality)), m_display(new QComboBox),
      m_pressure(new QCheckBox(QStringLiteral("Pen Pressure Simulation"))),
      m_fit(new QCheckBox(QStringLiteral("Fit large pictures to the window when opening"))), m_maxWidth(new QSpinBox),
      m_maxHeight(new QSpinBox), m_undoSteps(new QSpinBox), m_undoMemory(new QSpinBox) {
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
    m_fit->setChecked(values.fitLargePictures);
    displayLayout->addRow(m_fit);
    layout->addWidget(display);

    m_pressure->setChecked(values.pressureSimulation);
    layout->addWidget(m_pressure);

    auto* large = new QGroupBox(QStringLiteral("Large Pictures"));
    auto* largeLayout = new QFormLayout(large);
    m_maxWidth->setRange(LoadLimits::kFloorWidth, LoadLimits::kMostRaised);
    m_maxHeight->setRange(LoadLimits::kFloorHeight, LoadLimits::kMostRaised);
    m_maxWidth->setValue(values.maxLoadWidth);
    m_maxHeight->setValue(values.maxLoadHeight);
    m_maxWidth->setSuffix(QStringLiteral(" pixels"));
    m_maxHeight->setSuffix(QStringLiteral(" pixels"));
    largeLayout->addRow(QStringLiteral("Load up to width :"), m_maxWidth);
    largeLayout->addRow(QStringLiteral("Load up to height :"), m_maxHeight);
    auto* note =
        new QLabel(QStringLiteral("Larger pictures open at a reduced size. Takes effect at the next start."));
    note->setWordWrap(true);
    largeLayout->addRow(note);
    layout->addWidget(large);

    auto* undo = new QGroupBox(QStringLiteral("Undo"));
    auto* undoLayout = new QFormLayout(undo);
    m_undoSteps->setRange(undolimits::kMinSteps, undolimits::kMaxSteps);
    m_undoSteps->setValue(values.undoSteps);
    m_undoMemory->setRange(undolimits::kMinMemoryMB, undolimits::kMaxMemoryMB);
    m_undoMemory->setValue(values.undoMemoryMB);
    m_undoMemory->setSuffix(QStringLiteral(" MB"));
    undoLayout->addRow(QStringLiteral("Undo steps :"), m_undoSteps);
    undoLayout->addRow(QStringLiteral("Undo memory :"), m_undoMemory);
    layout->addWidget(undo);

    AddOkCancelButtons(this, layout);
}

OptionsValues OptionsDialog::Values() const {
    OptionsValues values{m_quality->Value(), m_display->currentIndex(), m_pressure->isChecked(),
                         m_maxWidth->value(), m_maxHeight->value()};
    values.undoSteps = m_undoSteps->value();
    values.undoMemoryMB = m_undoMemory->value();
    values.fitLargePictures = m_fit->isChecked();
    return values;
}

void OptionsDialog::accept() {
    if (!m_quality->InRange()) {
        platform::ShowMessage(platform::IDS_QUALITY_OUT_OF_RANGE, platform::MB_ICONEXCLAMATION);
        return;
    }
    QDialog::accept();
}
