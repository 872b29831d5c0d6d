#include "dialogs/FillColorDialog.h"

#include "dialogs/DialogButtons.h"
#include "ops/EditCommands.h"

#include <QButtonGroup>
#include <QRadioButton>
#include <QVBoxLayout>

FillColorDialog::FillColorDialog(int choice, QWidget* parent)
    : QDialog(parent), m_choices(new QButtonGroup(this)) {
    setWindowTitle(QStringLiteral("Fill Color"));
    auto* layout = new QVBoxLayout(this);
    const char* labels[] = {"Foreground Color", "Background Color", "White", "Black"};
    for (int index = 0; index < 4; ++index) {
        auto* button = new QRadioButton(QString::fromLatin1(labels[index]));
        m_choices->addButton(button, index);
        layout->addWidget(button);
    }
    QAbstractButton* checked = m_choices->button(choice);
    (checked != nullptr ? checked : m_choices->button(0))->setChecked(true);
    AddOkCancelButtons(this, layout);
}

int FillColorDialog::Choice() const {
    return m_choices->checkedId();
}

bool FillColorDialog::AskAndStore(QWidget* parent) {
    FillColorDialog dialog(ReadFillChoice(), parent);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    WriteFillChoice(dialog.Choice());
    return true;
}
