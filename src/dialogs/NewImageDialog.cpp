#include "dialogs/NewImageDialog.h"

#include "dialogs/DialogButtons.h"
#include "dialogs/NumberFormat.h"
#include "image/DibHelpers.h"
#include "image/DibTypes.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {
int NumberIn(const QLineEdit* edit) {
    return edit->text().trimmed().toInt();
}
} // namespace

NewImageDialog::NewImageDialog(const NewImageValues& values, QWidget* parent)
    : QDialog(parent), m_width(new QLineEdit(QString::number(values.width))),
      m_height(new QLineEdit(QString::number(values.height))),
      m_dpi(new QLineEdit(QString::number(values.dpi))), m_white(new QRadioButton(QStringLiteral("White"))),
      m_background(new QRadioButton(QStringLiteral("Background Color"))), m_size(new QLabel) {
    setWindowTitle(QStringLiteral("Create New Image"));
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Image Width :"), m_width);
    form->addRow(QStringLiteral("Image Height :"), m_height);
    form->addRow(QStringLiteral("Resolution :"), m_dpi);
    auto* sizeRow = new QHBoxLayout;
    sizeRow->addWidget(m_size);
    sizeRow->addWidget(new QLabel(QStringLiteral("K Bytes")));
    sizeRow->addStretch();
    form->addRow(QStringLiteral("Image Size :"), sizeRow);
    layout->addLayout(form);

    auto* contents = new QGroupBox(QStringLiteral("Contents"));
    auto* contentsLayout = new QVBoxLayout(contents);
    contentsLayout->addWidget(m_white);
    contentsLayout->addWidget(m_background);
    (values.contents == 0 ? m_white : m_background)->setChecked(true);
    layout->addWidget(contents);

    AddOkCancelButtons(this, layout);

    connect(m_width, &QLineEdit::textChanged, this, &NewImageDialog::UpdateSize);
    connect(m_height, &QLineEdit::textChanged, this, &NewImageDialog::UpdateSize);
    UpdateSize();
}

NewImageValues NewImageDialog::Values() const {
    return {NumberIn(m_width), NumberIn(m_height), NumberIn(m_dpi), m_background->isChecked() ? 1 : 0};
}

QString NewImageDialog::SizeText() const {
    return m_size->text();
}

void NewImageDialog::UpdateSize() {
    const int width = NumberIn(m_width);
    const int height = NumberIn(m_height);
    if (width < 1 || width > kLargestPictureSide || height < 1 || height > kLargestPictureSide) {
        m_size->setText(QStringLiteral("-"));
        return;
    }
    const std::uint64_t bytes =
        static_cast<std::uint64_t>(DibRowBytes(width, 24)) * static_cast<unsigned>(height);
    m_size->setText(QString::fromStdString(numfmt::Kilobytes(bytes)));
}

void NewImageDialog::accept() {
    const NewImageValues values = Values();
    if (values.width < 1 || values.width > kLargestPictureSide || values.height < 1 ||
        values.height > kLargestPictureSide) {
        platform::ShowMessage(platform::IDS_NEW_SIZE_OUT_OF_RANGE, platform::MB_ICONEXCLAMATION);
        return;
    }
    if (values.dpi <= 0) {
        platform::ShowMessage(platform::IDS_NEW_RESOLUTION_INVALID, platform::MB_ICONEXCLAMATION);
        return;
    }
    QDialog::accept();
}
