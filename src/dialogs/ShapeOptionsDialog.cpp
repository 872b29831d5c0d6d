#include "dialogs/ShapeOptionsDialog.h"

#include "dialogs/DialogButtons.h"
#include "platform/Settings.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace {

// The picture of a draw style: black ink, a grey inside standing for the
// background colour.
QPixmap StylePicture(int style, bool ellipse) {
    constexpr int kSize = 40;
    QPixmap picture(kSize, kSize);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing, ellipse);
    const QRectF box(6.5, 9.5, kSize - 13, kSize - 19);
    painter.setPen(style == 2 ? QPen(Qt::black, 1) : QPen(Qt::black, 4));
    painter.setBrush(style == 0 ? QBrush(Qt::NoBrush) : QBrush(style == 1 ? Qt::lightGray : Qt::black));
    if (ellipse) {
        painter.drawEllipse(box);
    } else {
        painter.drawRect(box);
    }
    return picture;
}

} // namespace

ShapeOptionsDialog::ShapeOptionsDialog(bool ellipse, QWidget* parent)
    : QDialog(parent), m_section(ellipse ? "PaintOval" : "PaintRect"),
      m_fromCenter(new QCheckBox(QStringLiteral("Draw From Center"))), m_styles(new QButtonGroup(this)) {
    setWindowTitle(QStringLiteral("Tool Options"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_fromCenter);
    layout->addWidget(new QLabel(QStringLiteral("Draw Style :")));
    auto* pictures = new QHBoxLayout;
    for (int style = 0; style < 3; ++style) {
        auto* button = new QToolButton;
        button->setCheckable(true);
        button->setIcon(StylePicture(style, ellipse));
        button->setIconSize(QSize(40, 40));
        m_styles->addButton(button, style);
        pictures->addWidget(button);
    }
    layout->addLayout(pictures);
    AddOkCancelButtons(this, layout);

    m_fromCenter->setChecked(platform::Settings::ReadInt(m_section, "DrawFromCenter", 0) != 0);
    m_styles->button(std::clamp(platform::Settings::ReadInt(m_section, "DrawStyle", 0), 0, 2))
        ->setChecked(true);
}

int ShapeOptionsDialog::DrawStyle() const {
    return std::max(m_styles->checkedId(), 0);
}

void ShapeOptionsDialog::accept() {
    platform::Settings::WriteInt(m_section, "DrawStyle", DrawStyle());
    platform::Settings::WriteInt(m_section, "DrawFromCenter", m_fromCenter->isChecked() ? 1 : 0);
    QDialog::accept();
}

void ShapeOptionsDialog::OpenForRectangle(QWidget* parent) {
    ShapeOptionsDialog dialog(false, parent);
    dialog.exec();
}

void ShapeOptionsDialog::OpenForEllipse(QWidget* parent) {
    ShapeOptionsDialog dialog(true, parent);
    dialog.exec();
}
