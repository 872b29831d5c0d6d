#pragma once

#include <QDialog>

class NumberTriple;
class QComboBox;

// "Pen shape and size": the pen size (1..32) and one of the six pen shapes
// ("Rect", "Oval", "HLine", "VLine", "Slash", "BSlash"), kept in
// "ToolSection"/"PenSize" and "PenShape" (shape numbers 1..6).
class PenShapeDialog : public QDialog {
    Q_OBJECT
public:
    PenShapeDialog(int penSize, int penShape, QWidget* parent = nullptr);

    NumberTriple* Size() const { return m_size; }
    QComboBox* Shape() const { return m_shape; }
    int PenSize() const;
    int PenShape() const;
    void accept() override;

private:
    NumberTriple* m_size;
    QComboBox* m_shape;
};
