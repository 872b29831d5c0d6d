#pragma once

#include "dialogs/CommandDialog.h"

class QComboBox;

// "Average Options": a list of cell sizes from "2 x 2 Pixels" to
// "8 x 8 Pixels". The filter always averages 4 x 4 cells; the choice only
// decides between going ahead and cancelling.
class CAverageDlg : public CommandDialog {
    Q_OBJECT
public:
    explicit CAverageDlg(QWidget* parent = nullptr);

    QComboBox* CellChoice() const { return m_cellChoice; }

private:
    QComboBox* m_cellChoice;
};
