#pragma once

#include <QDialog>

class NumberTriple;

// "Flood Fill Options": the colour similarity (0..255) of the fill, kept in
// "FloodFill"/"Tolerance".
class FloodFillOptionsDialog : public QDialog {
    Q_OBJECT
public:
    explicit FloodFillOptionsDialog(QWidget* parent = nullptr);

    NumberTriple* Similarity() const { return m_similarity; }
    void accept() override;

    static void Open(QWidget* parent);

private:
    NumberTriple* m_similarity;
};
