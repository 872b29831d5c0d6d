#include "dialogs/CAverageDlg.h"

#include "platform/StringTable.h"

#include <QComboBox>
#include <QFormLayout>

CAverageDlg::CAverageDlg(QWidget* parent)
    : CommandDialog(QStringLiteral("Average Options"), parent), m_cellChoice(new QComboBox) {
    for (int id = platform::IDS_CELL_2X2; id <= platform::IDS_CELL_8X8; ++id) {
        const std::string_view text = platform::LoadString(id);
        m_cellChoice->addItem(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    }
    m_cellChoice->setCurrentIndex(0);
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Cell Size :"), m_cellChoice);
    Body()->addLayout(form);
}
