#pragma once

#include <QDialog>

class QButtonGroup;

// "Fill Color": which colour Edit > Fill... paints with (0 foreground,
// 1 background, 2 white, 3 black).
class FillColorDialog : public QDialog {
    Q_OBJECT
public:
    explicit FillColorDialog(int choice, QWidget* parent = nullptr);

    int Choice() const;

    // Asks for the fill colour starting from the stored choice; on OK stores
    // the new choice and returns true.
    static bool AskAndStore(QWidget* parent);

private:
    QButtonGroup* m_choices;
};
