#include "dialogs/CMosaicDlg.h"

#include "dialogs/NumberTriple.h"
#include "ops/ImageCommands.h"

#include <QFormLayout>

CMosaicDlg::CMosaicDlg(QWidget* parent) : CommandDialog(QStringLiteral("Mosaic Filter Dialog"), parent) {
    auto* form = new QFormLayout;
    m_cellSize =
        AddNumber(form, QStringLiteral("Cell Size :"), 2, 16, DefaultFilterOptions(kMosaic).cellSize, 4);
    Body()->addLayout(form);
}

std::vector<int> CMosaicDlg::CommandValues() const {
    return {m_cellSize->Value()};
}
