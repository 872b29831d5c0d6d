#pragma once

#include <QDialog>

// "About Tamrick": the product name and version, and a "Close" button.
class AboutDialog : public QDialog {
    Q_OBJECT
public:
    explicit AboutDialog(const QIcon& icon, QWidget* parent = nullptr);
    // "%s Version 2.11" with the product name.
    static QString VersionText();
};
