#pragma once

#include <QDialog>

class NumberTriple;
class QCheckBox;
class QWidget;

// "Magic Wand Options": the colour similarity (0..255) and whether only the
// continuous area is selected. OK writes both settings; a similarity that is
// not a whole number in range keeps the dialog open with its text selected.
class MagicWandDialog : public QDialog {
    Q_OBJECT
public:
    explicit MagicWandDialog(QWidget* parent = nullptr);

    NumberTriple* Similarity() const { return m_similarity; }
    QCheckBox* Continuous() const { return m_continuous; }

    void accept() override;

private:
    NumberTriple* m_similarity;
    QCheckBox* m_continuous;
};

// The tool-options entry of the magic wand.
void OpenMagicWandOptions(QWidget* parent);
