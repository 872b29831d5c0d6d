#pragma once

#include "dialogs/CommandDialog.h"

class NumberTriple;
class QButtonGroup;

// "Find Edge Filter" (template 6006) and "Trace Contour Filter" (6007): pairs
// of radio buttons in groups, and the transparency 0..100.
class CEdgeDlg : public CommandDialog {
    Q_OBJECT
public:
    CEdgeDlg(bool isContour, QWidget* parent = nullptr);

    std::vector<int> CommandValues() const override;
    bool IsContour() const { return m_isContour; }
    // Each group's choice: index 0 is the first button, 1 the second.
    QButtonGroup* EdgeMethod() const { return m_edgeMethod; } // Trace Contour only
    QButtonGroup* ColorMode() const { return m_colorMode; }
    QButtonGroup* Background() const { return m_background; }
    NumberTriple* Transparency() const { return m_transparency; }

private:
    QButtonGroup* AddPair(const QString& title, const QString& first, const QString& second, int checked);

    bool m_isContour;
    QButtonGroup* m_edgeMethod = nullptr;
    QButtonGroup* m_colorMode;
    QButtonGroup* m_background;
    NumberTriple* m_transparency;
};
