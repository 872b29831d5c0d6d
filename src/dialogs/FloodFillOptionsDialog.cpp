#include "dialogs/FloodFillOptionsDialog.h"

#include "dialogs/DialogButtons.h"
#include "dialogs/NumberTriple.h"
#include "platform/MessagePresenter.h"
#include "platform/Settings.h"
#include "platform/StringTable.h"

#include <QLabel>
#include <QVBoxLayout>

FloodFillOptionsDialog::FloodFillOptionsDialog(QWidget* parent)
    : QDialog(parent),
      m_similarity(new NumberTriple(0, 255, platform::Settings::ReadInt("FloodFill", "Tolerance", 32))) {
    setWindowTitle(QStringLiteral("Flood Fill Options"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Color Similarity :")));
    layout->addWidget(m_similarity);
    layout->addWidget(new QLabel(QStringLiteral("(0 - 255)")));
    AddOkCancelButtons(this, layout);
}

void FloodFillOptionsDialog::accept() {
    if (!m_similarity->InRange()) {
        platform::ShowMessage(platform::IDS_SIMILARITY_OUT_OF_RANGE, platform::MB_ICONEXCLAMATION);
        return;
    }
    platform::Settings::WriteInt("FloodFill", "Tolerance", m_similarity->Value());
    QDialog::accept();
}

void FloodFillOptionsDialog::Open(QWidget* parent) {
    FloodFillOptionsDialog dialog(parent);
    dialog.exec();
}
