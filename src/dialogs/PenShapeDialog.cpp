#include "dialogs/PenShapeDialog.h"

#include "dialogs/DialogButtons.h"
#include "dialogs/NumberTriple.h"
#include "platform/MessagePresenter.h"
#include "platform/Settings.h"
#include "platform/StringTable.h"

#include <QComboBox>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

PenShapeDialog::PenShapeDialog(int penSize, int penShape, QWidget* parent)
    : QDialog(parent), m_size(new NumberTriple(1, 32, penSize)), m_shape(new QComboBox) {
    setWindowTitle(QStringLiteral("Pen shape and size"));
    m_shape->addItems({QStringLiteral("Rect"), QStringLiteral("Oval"), QStringLiteral("HLine"),
                       QStringLiteral("VLine"), QStringLiteral("Slash"), QStringLiteral("BSlash")});
    m_shape->setCurrentIndex(std::clamp(penShape, 1, 6) - 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Pen Size :")));
    layout->addWidget(m_size);
    layout->addWidget(new QLabel(QStringLiteral("Pen Shape :")));
    layout->addWidget(m_shape);
    AddOkCancelButtons(this, layout);
}

int PenShapeDialog::PenSize() const {
    return m_size->Value();
}

int PenShapeDialog::PenShape() const {
    return m_shape->currentIndex() + 1;
}

void PenShapeDialog::accept() {
    if (!m_size->InRange()) {
        platform::ShowMessage(platform::IDS_PEN_SIZE_OUT_OF_RANGE, platform::MB_ICONEXCLAMATION);
        return;
    }
    platform::Settings::WriteInt("ToolSection", "PenSize", PenSize());
    platform::Settings::WriteInt("ToolSection", "PenShape", PenShape());
    QDialog::accept();
}
