#pragma once

#include "dialogs/CommandDialog.h"

class NumberTriple;
class QAbstractButton;
class QButtonGroup;

// "Emboss Filter Dialog": the light direction as eight radio buttons in a
// 3 x 3 grid around an empty centre, and the depth 1..10.
class CEmbossDlg : public CommandDialog {
    Q_OBJECT
public:
    explicit CEmbossDlg(QWidget* parent = nullptr);

    std::vector<int> CommandValues() const override;
    int Direction() const;
    void SetDirection(int direction);
    QAbstractButton* DirectionButton(int direction) const;
    NumberTriple* Depth() const { return m_depth; }

private:
    QButtonGroup* m_directions;
    NumberTriple* m_depth;
};
