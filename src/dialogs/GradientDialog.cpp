#include "dialogs/GradientDialog.h"

#include "dialogs/DialogButtons.h"
#include "platform/Settings.h"

#include <QComboBox>
#include <QFormLayout>
#include <QVBoxLayout>
#include <algorithm>

GradientDialog::GradientDialog(QWidget* parent)
    : QDialog(parent), m_colorMode(new QComboBox), m_shape(new QComboBox) {
    setWindowTitle(QStringLiteral("Gradient Dialog"));
    m_colorMode->addItems({QStringLiteral("RGB"), QStringLiteral("Hue, CW"), QStringLiteral("Hue, CCW")});
    m_shape->addItems({QStringLiteral("Linear"), QStringLiteral("Radial"), QStringLiteral("Rectangle"),
                       QStringLiteral("Cone")});
    m_colorMode->setCurrentIndex(std::clamp(platform::Settings::ReadInt("Gradient", "ColorMode", 0), 0, 2));
    m_shape->setCurrentIndex(std::clamp(platform::Settings::ReadInt("Gradient", "Shape", 0), 0, 3));
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Color Mode :"), m_colorMode);
    form->addRow(QStringLiteral("Shape :"), m_shape);
    layout->addLayout(form);
    AddOkCancelButtons(this, layout);
}

void GradientDialog::accept() {
    platform::Settings::WriteInt("Gradient", "ColorMode", m_colorMode->currentIndex());
    platform::Settings::WriteInt("Gradient", "Shape", m_shape->currentIndex());
    QDialog::accept();
}

void GradientDialog::Open(QWidget* parent) {
    GradientDialog dialog(parent);
    dialog.exec();
}
