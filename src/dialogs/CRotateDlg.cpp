#include "dialogs/CRotateDlg.h"

#include "dialogs/NumberTriple.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QRadioButton>

CRotateDlg::CRotateDlg(QWidget* parent)
    : CommandDialog(QStringLiteral("Rotate"), parent), m_degree(new NumberTriple(0, 359, 0)),
      m_cw(new QRadioButton(QStringLiteral("CW"))), m_ccw(new QRadioButton(QStringLiteral("CCW"))) {
    m_degree->SetPageStep(15);
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Degree :"), m_degree);
    auto* direction = new QHBoxLayout;
    direction->addWidget(m_cw);
    direction->addWidget(m_ccw);
    direction->addStretch();
    form->addRow(QString(), direction);
    m_cw->setChecked(true);
    Body()->addLayout(form);
}

bool CRotateDlg::Validate() {
    if (!m_degree->InRange()) {
        platform::ShowMessage(platform::IDS_DEGREE_OUT_OF_RANGE,
                              platform::MB_OK | platform::MB_ICONEXCLAMATION);
        return false;
    }
    return true;
}

std::vector<int> CRotateDlg::CommandValues() const {
    return {m_degree->Value(), m_ccw->isChecked() ? 1 : 0};
}
