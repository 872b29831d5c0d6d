#include "app/QtMessagePresenter.h"

#include <QMessageBox>
#include <QString>

using platform::MessageAnswer;
using platform::MessageButtons;
using platform::MessageIcon;

namespace {
QMessageBox::Icon IconFor(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::Stop:
        return QMessageBox::Critical;
    case MessageIcon::Question:
        return QMessageBox::Question;
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Exclamation:
        break;
    }
    return QMessageBox::Warning;
}

QMessageBox::StandardButtons ButtonsFor(MessageButtons buttons) {
    switch (buttons) {
    case MessageButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case MessageButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MessageButtons::Ok:
        break;
    }
    return QMessageBox::Ok;
}
} // namespace

MessageAnswer QtMessagePresenter::Present(const platform::Message& message) {
    QMessageBox box(IconFor(message.icon), QString::fromStdString(message.caption),
                    QString::fromStdString(message.text), ButtonsFor(message.buttons), m_parent);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return MessageAnswer::Yes;
    case QMessageBox::No:
        return MessageAnswer::No;
    case QMessageBox::Cancel:
        return MessageAnswer::Cancel;
    default:
        return MessageAnswer::Ok;
    }
}
