#include "dialogs/DialogButtons.h"

#include <QBoxLayout>
#include <QDialog>
#include <QDialogButtonBox>

QDialogButtonBox* AddOkCancelButtons(QDialog* dialog, QBoxLayout* layout) {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    layout->addWidget(buttons);
    return buttons;
}
