#include "dialogs/MagicWandDialog.h"

#include "dialogs/DialogButtons.h"
#include "dialogs/NumberTriple.h"
#include "selection/MagicWand.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QVBoxLayout>

MagicWandDialog::MagicWandDialog(QWidget* parent)
    : QDialog(parent), m_similarity(new NumberTriple(0, 255, WandSettings::Read().tolerance)),
      m_continuous(new QCheckBox(QStringLiteral("Select continuous area"))) {
    setWindowTitle(QStringLiteral("Magic Wand Options"));
    auto* layout = new QVBoxLayout(this);
    auto* row = new QHBoxLayout;
    row->addWidget(new QLabel(QStringLiteral("Color Similarity :")));
    // An edit box with its up-down control; this dialog has no track bar.
    m_similarity->TrackBar()->hide();
    row->addWidget(m_similarity);
    row->addWidget(new QLabel(QStringLiteral("(0 - 255)")));
    row->addStretch();
    layout->addLayout(row);
    m_continuous->setChecked(WandSettings::Read().continuous);
    layout->addWidget(m_continuous);
    AddOkCancelButtons(this, layout);
    m_similarity->Edit()->selectAll();
    m_similarity->Edit()->setFocus();
}

void MagicWandDialog::accept() {
    if (!m_similarity->InRange()) {
        m_similarity->Edit()->selectAll();
        m_similarity->Edit()->setFocus();
        return;
    }
    WandSettings settings;
    settings.tolerance = m_similarity->Value();
    settings.continuous = m_continuous->isChecked();
    settings.Write();
    QDialog::accept();
}

void OpenMagicWandOptions(QWidget* parent) {
    MagicWandDialog dialog(parent);
    dialog.exec();
}
