#pragma once

#include "dialogs/CommandDialog.h"

class NumberTriple;
class QRadioButton;

// "Rotate": the angle in whole degrees 0..359 and the turning direction. A
// number out of range is refused with its message rather than clamped.
class CRotateDlg : public CommandDialog {
    Q_OBJECT
public:
    explicit CRotateDlg(QWidget* parent = nullptr);

    std::vector<int> CommandValues() const override;
    NumberTriple* Degree() const { return m_degree; }
    QRadioButton* Clockwise() const { return m_cw; }
    QRadioButton* CounterClockwise() const { return m_ccw; }

protected:
    bool Validate() override;

private:
    NumberTriple* m_degree;
    QRadioButton* m_cw;
    QRadioButton* m_ccw;
};
