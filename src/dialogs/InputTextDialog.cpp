#include "dialogs/InputTextDialog.h"

#include "dialogs/DialogButtons.h"
#include "paint/TextGlyphs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

constexpr int kSizes[] = {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 36, 48, 72};
constexpr int kLargestSize = 999;
constexpr int kDefaultSize = 12;
constexpr int kLargestSampleSize = 72;
const char* const kSampleText = "AaBbYyZz";

// The size the dialog shows: the character height in pixels.
int ShownSize(std::int32_t height) {
    if (height == 0) {
        return kDefaultSize;
    }
    return height < 0 ? -height : height;
}

} // namespace

InputTextDialog::InputTextDialog(const TextFont& font, const std::string& text, QWidget* parent)
    : QDialog(parent), m_original(font), m_originalSize(QString::number(ShownSize(font.height))),
      m_text(new QLineEdit(QString::fromStdString(text))), m_face(new QFontComboBox), m_size(new QComboBox),
      m_bold(new QCheckBox(QStringLiteral("Bold"))), m_italic(new QCheckBox(QStringLiteral("Italic"))),
      m_underline(new QCheckBox(QStringLiteral("Underline"))),
      m_strikeOut(new QCheckBox(QStringLiteral("StrikeOut"))), m_sample(new QLabel) {
    setWindowTitle(QStringLiteral("Input Text"));
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Text:"), m_text);

    // The stored face stays named even when this system lacks it.
    m_face->setCurrentFont(TextGlyphs::MakeFont(font));
    m_face->setEditText(QString::fromStdString(font.faceName));
    form->addRow(QStringLiteral("Font:"), m_face);

    m_size->setEditable(true);
    for (const int size : kSizes) {
        m_size->addItem(QString::number(size));
    }
    m_size->setValidator(new QIntValidator(1, kLargestSize, m_size));
    m_size->setEditText(m_originalSize);
    form->addRow(QStringLiteral("Size:"), m_size);
    layout->addLayout(form);

    auto* style = new QGridLayout;
    style->addWidget(m_bold, 0, 0);
    style->addWidget(m_italic, 0, 1);
    style->addWidget(m_underline, 1, 0);
    style->addWidget(m_strikeOut, 1, 1);
    m_bold->setChecked(font.IsBold());
    m_italic->setChecked(font.italic != 0);
    m_underline->setChecked(font.underline != 0);
    m_strikeOut->setChecked(font.strikeOut != 0);
    layout->addLayout(style);

    auto* sample = new QGroupBox(QStringLiteral("Sample:"));
    auto* sampleLayout = new QVBoxLayout(sample);
    m_sample->setAlignment(Qt::AlignCenter);
    m_sample->setMinimumHeight(48);
    sampleLayout->addWidget(m_sample);
    layout->addWidget(sample);

    AddOkCancelButtons(this, layout);

    connect(m_text, &QLineEdit::textChanged, this, &InputTextDialog::UpdateSample);
    connect(m_face, &QComboBox::currentTextChanged, this, &InputTextDialog::UpdateSample);
    connect(m_size, &QComboBox::currentTextChanged, this, &InputTextDialog::UpdateSample);
    for (QCheckBox* box : {m_bold, m_italic, m_underline, m_strikeOut}) {
        connect(box, &QCheckBox::toggled, this, &InputTextDialog::UpdateSample);
    }
    UpdateSample();
}

TextFont InputTextDialog::Font() const {
    TextFont font = m_original;
    const QString face = m_face->currentText().trimmed();
    if (!face.isEmpty()) {
        font.faceName = face.toStdString();
    }
    const QString size = m_size->currentText().trimmed();
    if (size != m_originalSize && size.toInt() > 0) {
        font.height = -std::min(size.toInt(), kLargestSize);
    }
    if (m_bold->isChecked() != font.IsBold()) {
        font.weight = m_bold->isChecked() ? TextFont::kBoldWeight : TextFont::kRegularWeight;
    }
    font.italic = m_italic->isChecked() ? 1 : 0;
    font.underline = m_underline->isChecked() ? 1 : 0;
    font.strikeOut = m_strikeOut->isChecked() ? 1 : 0;
    return font;
}

std::string InputTextDialog::Text() const {
    return m_text->text().toStdString();
}

void InputTextDialog::UpdateSample() {
    const QString text = m_text->text();
    QFont font = TextGlyphs::MakeFont(Font());
    font.setPixelSize(std::min(font.pixelSize(), kLargestSampleSize));
    m_sample->setFont(font);
    m_sample->setText(text.isEmpty() ? QString::fromLatin1(kSampleText) : text);
}
