#include "dialogs/SystemInfoDialog.h"

#include "dialogs/NumberFormat.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>

namespace {
QGroupBox* Group(const QString& title, const QString& totalLabel, std::uint64_t total,
                 const QString& freeLabel, std::uint64_t free) {
    auto* group = new QGroupBox(title);
    auto* form = new QFormLayout(group);
    auto value = [](std::uint64_t bytes) {
        auto* label = new QLabel(SystemInfoDialog::KBytes(bytes) + QStringLiteral(" KBytes"));
        label->setObjectName(QStringLiteral("value"));
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        return label;
    };
    form->addRow(totalLabel, value(total));
    form->addRow(freeLabel, value(free));
    return group;
}
} // namespace

QString SystemInfoDialog::KBytes(std::uint64_t bytes) {
    return QString::fromStdString(numfmt::Grouped(static_cast<std::int64_t>(bytes / 1024)));
}

SystemInfoDialog::SystemInfoDialog(const SystemFigures& figures, bool alternativeLayout, QWidget* parent)
    : QDialog(parent) {
    setWindowTitle(QStringLiteral("System Information"));
    auto* groups = new QBoxLayout(alternativeLayout ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    groups->addWidget(Group(QStringLiteral("Program"), QStringLiteral("Total Memory :"), figures.totalMemory,
                            QStringLiteral("Free Memory :"), figures.freeMemory));
    groups->addWidget(Group(QStringLiteral("Storage"), QStringLiteral("Total Space :"), figures.totalSpace,
                            QStringLiteral("Free Space :"), figures.freeSpace));
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(groups);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    layout->addWidget(buttons);
}
