#include "dialogs/CRescaleDlg.h"

#include "image/CBriselDoc.h"
#include "image/CDibImage.h"
#include "image/DibTypes.h"
#include "ops/ImageCommands.h"
#include "platform/MessagePresenter.h"
#include "platform/Settings.h"
#include "platform/StringTable.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include <cmath>

namespace {
const char* const kSection = "DocumentInfo";
const char* const kUnitKey = "Unit";
constexpr int kDefaultDpi = 72;

bool ShowError(int stringId) {
    platform::ShowMessage(stringId, platform::MB_OK | platform::MB_ICONEXCLAMATION);
    return false;
}
} // namespace

CRescaleDlg::CRescaleDlg(const CBriselDoc& doc, QWidget* parent)
    : CommandDialog(QStringLiteral("Rescale"), parent), m_widthEdit(new QLineEdit),
      m_heightEdit(new QLineEdit), m_dpiEdit(new QLineEdit),
      m_keepAspect(new QCheckBox(QStringLiteral("Keep aspect ratio"))), m_units(new QButtonGroup(this)) {
    const CDibImage* image = doc.GetImage();
    const CDibImage* picture = doc.GetPicture();
    m_sourceWidth = image != nullptr ? image->Width() : 1;
    m_sourceHeight = image != nullptr ? image->Height() : 1;
    m_width = m_sourceWidth;
    m_height = m_sourceHeight;
    m_dpi = picture != nullptr && picture->DpiX() > 0 ? picture->DpiX() : kDefaultDpi;

    Body()->addWidget(
        new QLabel(QStringLiteral("Current size : %1 x %2 pixels").arg(m_sourceWidth).arg(m_sourceHeight)));
    auto* unitBox = new QGroupBox(QStringLiteral("Unit"));
    auto* unitLayout = new QHBoxLayout(unitBox);
    for (auto [unit, label] : {std::pair{kPixel, "Pixel"}, std::pair{kCm, "Cm"}, std::pair{kInch, "Inch"}}) {
        auto* button = new QRadioButton(QString::fromLatin1(label));
        m_units->addButton(button, unit);
        unitLayout->addWidget(button);
    }
    const int stored = platform::Settings::ReadInt(kSection, kUnitKey, kPixel);
    m_units->button(stored >= kCm && stored <= kPixel ? stored : kPixel)->setChecked(true);
    Body()->addWidget(unitBox);

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Width :"), m_widthEdit);
    form->addRow(QStringLiteral("Height :"), m_heightEdit);
    auto* dpiRow = new QHBoxLayout;
    dpiRow->addWidget(m_dpiEdit);
    dpiRow->addWidget(new QLabel(QStringLiteral("DPI")));
    form->addRow(QStringLiteral("Resolution :"), dpiRow);
    Body()->addLayout(form);
    m_keepAspect->setChecked(true);
    Body()->addWidget(m_keepAspect);

    m_dpiEdit->setText(QString::number(m_dpi));
    ShowSizes();
    connect(m_widthEdit, &QLineEdit::textEdited, this, &CRescaleDlg::WidthTyped);
    connect(m_heightEdit, &QLineEdit::textEdited, this, &CRescaleDlg::HeightTyped);
    connect(m_dpiEdit, &QLineEdit::textEdited, this, &CRescaleDlg::ResolutionTyped);
    connect(m_units, &QButtonGroup::idClicked, this, &CRescaleDlg::UnitChosen);
    connect(m_keepAspect, &QCheckBox::toggled, this, &CRescaleDlg::AspectToggled);
}

int CRescaleDlg::CurrentUnit() const {
    return m_units->checkedId();
}

double CRescaleDlg::PixelsPerUnit() const {
    switch (CurrentUnit()) {
    case kCm:
        return m_dpi / 2.54;
    case kInch:
        return m_dpi;
    default:
        return 1.0;
    }
}

QString CRescaleDlg::Format(double pixels) const {
    if (CurrentUnit() == kPixel) {
        return QString::number(std::lround(pixels));
    }
    return QString::number(pixels / PixelsPerUnit(), 'f', 2);
}

bool CRescaleDlg::Parse(const QLineEdit* edit, double& pixels) const {
    bool ok = false;
    const double value =
        CurrentUnit() == kPixel ? edit->text().trimmed().toInt(&ok) : edit->text().trimmed().toDouble(&ok);
    if (ok) {
        pixels = std::round(value * PixelsPerUnit());
    }
    return ok;
}

void CRescaleDlg::ShowSizes() {
    m_widthEdit->setText(Format(m_width));
    m_heightEdit->setText(Format(m_height));
    m_widthTyped = m_heightTyped = false;
    RememberLengths();
}

void CRescaleDlg::RememberLengths() {
    m_widthInches = m_width / m_dpi;
    m_heightInches = m_height / m_dpi;
}

void CRescaleDlg::WidthTyped() {
    m_widthTyped = true;
    if (Parse(m_widthEdit, m_width)) {
        FollowAspect(true);
        RememberLengths();
    }
}

void CRescaleDlg::HeightTyped() {
    m_heightTyped = true;
    if (Parse(m_heightEdit, m_height)) {
        FollowAspect(false);
        RememberLengths();
    }
}

// The other side follows the typed one in the picture's proportions.
void CRescaleDlg::FollowAspect(bool fromWidth) {
    if (!m_keepAspect->isChecked()) {
        return;
    }
    if (fromWidth) {
        m_height = std::max(1.0, std::round(m_width * m_sourceHeight / m_sourceWidth));
        m_heightEdit->setText(Format(m_height));
        m_heightTyped = false;
    } else {
        m_width = std::max(1.0, std::round(m_height * m_sourceWidth / m_sourceHeight));
        m_widthEdit->setText(Format(m_width));
        m_widthTyped = false;
    }
}

// Centimetres and inches keep their length when the resolution changes, so
// the pixel sizes follow; pixel sizes stay as they are.
void CRescaleDlg::ResolutionTyped() {
    bool ok = false;
    const int dpi = m_dpiEdit->text().trimmed().toInt(&ok);
    if (!ok || dpi < 1 || dpi > kMaxResolution) {
        return;
    }
    m_dpi = dpi;
    if (CurrentUnit() == kPixel) {
        RememberLengths();
        return;
    }
    m_width = std::max(1.0, std::round(m_widthInches * dpi));
    m_height = std::max(1.0, std::round(m_heightInches * dpi));
}

void CRescaleDlg::UnitChosen() {
    platform::Settings::WriteInt(kSection, kUnitKey, CurrentUnit());
    ShowSizes();
}

void CRescaleDlg::AspectToggled(bool keep) {
    if (keep) {
        FollowAspect(true);
        RememberLengths();
    }
}

bool CRescaleDlg::Validate() {
    if ((m_widthTyped && !Parse(m_widthEdit, m_width)) || (m_heightTyped && !Parse(m_heightEdit, m_height))) {
        return ShowError(platform::IDS_NOT_A_NUMBER);
    }
    bool ok = false;
    const int dpi = m_dpiEdit->text().trimmed().toInt(&ok);
    if (!ok) {
        return ShowError(platform::IDS_NOT_A_NUMBER);
    }
    if (m_width < 1 || m_width > kLargestPictureSide) {
        return ShowError(platform::IDS_WIDTH_OUT_OF_RANGE);
    }
    if (m_height < 1 || m_height > kLargestPictureSide) {
        return ShowError(platform::IDS_HEIGHT_OUT_OF_RANGE);
    }
    if (dpi < 1 || dpi > kMaxResolution) {
        return ShowError(platform::IDS_RESOLUTION_OUT_OF_RANGE);
    }
    m_dpi = dpi;
    return true;
}

std::vector<int> CRescaleDlg::CommandValues() const {
    return {static_cast<int>(m_width), static_cast<int>(m_height), m_dpi};
}
