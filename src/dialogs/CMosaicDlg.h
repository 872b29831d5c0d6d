#pragma once

#include "dialogs/CommandDialog.h"

class NumberTriple;

// "Mosaic Filter Dialog": the cell size 2..16.
class CMosaicDlg : public CommandDialog {
    Q_OBJECT
public:
    explicit CMosaicDlg(QWidget* parent = nullptr);

    std::vector<int> CommandValues() const override;
    NumberTriple* CellSize() const { return m_cellSize; }

private:
    NumberTriple* m_cellSize;
};
