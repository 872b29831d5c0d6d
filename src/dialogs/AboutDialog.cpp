#include "dialogs/AboutDialog.h"

#include "platform/StringTable.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

QString AboutDialog::VersionText() {
    const QString product = QString::fromUtf8(platform::LoadString(platform::IDS_PRODUCT_NAME).data());
    return QStringLiteral("%1 Version 2.11").arg(product);
}

AboutDialog::AboutDialog(const QIcon& icon, QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("About Tamrick"));
    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    auto* picture = new QLabel;
    picture->setPixmap(icon.pixmap(64, 64));
    top->addWidget(picture);
    auto* text =
        new QLabel(QStringLiteral("<b>%1</b><br>Paint and photo retouching for Linux desktops and pen "
                                  "tablets.<br>Copyright Quorvane Systems Inc.")
                       .arg(VersionText()));
    text->setObjectName(QStringLiteral("version"));
    top->addWidget(text, 1);
    layout->addLayout(top);
    auto* close = new QPushButton(QStringLiteral("Close"));
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(close);
    layout->addLayout(row);
}
