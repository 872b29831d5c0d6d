#pragma once

#include <QDialog>

class NumberTriple;
class QRadioButton;

// "Eraser Options": erase all colours or the foreground colour only, with the
// colour similarity (0..255) that the second choice uses. Reads and writes
// "Eraser"/"Eraser Type" and "Eraser"/"Red".
class EraserOptionsDialog : public QDialog {
    Q_OBJECT
public:
    explicit EraserOptionsDialog(QWidget* parent = nullptr);

    QRadioButton* AllColors() const { return m_all; }
    QRadioButton* ForegroundOnly() const { return m_foregroundOnly; }
    NumberTriple* Similarity() const { return m_similarity; }

    // Keeps the dialog open with a message when the similarity is out of range.
    void accept() override;

    static void Open(QWidget* parent);

private:
    QRadioButton* m_all;
    QRadioButton* m_foregroundOnly;
    NumberTriple* m_similarity;
};
