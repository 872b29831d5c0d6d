#include "dialogs/ImageInfoDialog.h"

#include "dialogs/NumberFormat.h"
#include "formats/CDocumentFiles.h"
#include "image/CBriselDoc.h"
#include "platform/Settings.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>

namespace {
const char* const kSection = "DocumentInfo";
const char* const kUnitKey = "Unit";

QLabel* ValueLabel() {
    auto* label = new QLabel;
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QWidget* WithSuffix(QWidget* value, const QString& suffix) {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(value);
    layout->addWidget(new QLabel(suffix));
    layout->addStretch();
    return row;
}
} // namespace

QString ImageInfoDialog::UntitledName() {
    return QStringLiteral("Untitled");
}

QString ImageInfoDialog::Length(int pixels, int dpi, int unit) {
    if (unit == kPixel) {
        return QString::fromStdString(numfmt::Grouped(pixels));
    }
    double value = dpi == 0 ? 0.0 : static_cast<double>(pixels) / dpi;
    if (unit == kCm) {
        value = dpi == 0 ? 0.0 : pixels * 2.54 / dpi;
    }
    return QString::fromStdString(numfmt::GroupedDecimal2(value));
}

ImageInfoDialog::ImageInfoDialog(const CBriselDoc& doc, bool alternativeLayout, QWidget* parent)
    : QDialog(parent), m_doc(doc), m_fileName(ValueLabel()), m_imageSize(ValueLabel()), m_width(ValueLabel()),
      m_height(ValueLabel()), m_unit(new QComboBox) {
    setWindowTitle(QStringLiteral("Image Information"));
    const CDibImage* picture = doc.GetPicture();
    const bool untitled = doc.PathName().empty() || doc.IsReduced() || doc.Title().empty();
    m_fileName->setText(untitled ? UntitledName() : QString::fromStdString(doc.Title()));
    m_imageSize->setText(QString::fromStdString(numfmt::Kilobytes(picture ? picture->ImageBytes() : 0)));

    auto* file = new QGroupBox(QStringLiteral("File"));
    auto* fileForm = new QFormLayout(file);
    fileForm->addRow(QStringLiteral("File Name :"), m_fileName);
    fileForm->addRow(QStringLiteral("Image Size :"), WithSuffix(m_imageSize, QStringLiteral("K Bytes")));

    auto* dimensions = new QGroupBox(QStringLiteral("Dimensions"));
    auto* sizeForm = new QFormLayout(dimensions);
    m_unit->addItems({QStringLiteral("Cm"), QStringLiteral("Inch"), QStringLiteral("Pixel")});
    const int unit = platform::Settings::ReadInt(kSection, kUnitKey, kPixel);
    m_unit->setCurrentIndex(unit >= kCm && unit <= kPixel ? unit : kPixel);
    sizeForm->addRow(QStringLiteral("Unit :"), m_unit);
    sizeForm->addRow(QStringLiteral("Width :"), m_width);
    sizeForm->addRow(QStringLiteral("Height :"), m_height);
    const int dpiX = picture ? picture->DpiX() : 0;
    const int dpiY = picture ? picture->DpiY() : 0;
    sizeForm->addRow(QStringLiteral("X-Resolution :"), WithSuffix(new QLabel(QString::number(dpiX)), "DPI"));
    sizeForm->addRow(QStringLiteral("Y-Resolution :"), WithSuffix(new QLabel(QString::number(dpiY)), "DPI"));

    // On a landscape screen the two groups stand side by side.
    auto* groups = new QBoxLayout(alternativeLayout ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    groups->addWidget(file);
    groups->addWidget(dimensions);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(groups);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(buttons);

    connect(m_unit, &QComboBox::currentIndexChanged, this, [this](int index) {
        platform::Settings::WriteInt(kSection, kUnitKey, index);
        ShowSize();
    });
    ShowSize();
}

void ImageInfoDialog::ShowSize() {
    const CDibImage* picture = m_doc.GetPicture();
    const int unit = m_unit->currentIndex();
    m_width->setText(picture ? Length(picture->Width(), picture->DpiX(), unit) : QString());
    m_height->setText(picture ? Length(picture->Height(), picture->DpiY(), unit) : QString());
}

QString ImageInfoDialog::FileNameText() const {
    return m_fileName->text();
}
QString ImageInfoDialog::ImageSizeText() const {
    return m_imageSize->text();
}
QString ImageInfoDialog::WidthText() const {
    return m_width->text();
}
QString ImageInfoDialog::HeightText() const {
    return m_height->text();
}
