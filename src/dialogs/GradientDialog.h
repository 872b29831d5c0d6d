#pragma once

#include <QDialog>

class QComboBox;

// "Gradient Dialog": the colour mode ("RGB", "Hue, CW", "Hue, CCW") and the
// shape ("Linear", "Radial", "Rectangle", "Cone") of the gradient tool; the
// list position is what "Gradient"/"ColorMode" and "Gradient"/"Shape" keep.
class GradientDialog : public QDialog {
    Q_OBJECT
public:
    explicit GradientDialog(QWidget* parent = nullptr);

    QComboBox* ColorMode() const { return m_colorMode; }
    QComboBox* Shape() const { return m_shape; }
    void accept() override;

    static void Open(QWidget* parent);

private:
    QComboBox* m_colorMode;
    QComboBox* m_shape;
};
