#pragma once

#include "platform/MessagePresenter.h"

class QWidget;

// Shows the program's messages as modal message boxes over the main window.
class QtMessagePresenter : public platform::MessagePresenter {
public:
    explicit QtMessagePresenter(QWidget* parent) : m_parent(parent) {}
    platform::MessageAnswer Present(const platform::Message& message) override;

private:
    QWidget* m_parent;
};
