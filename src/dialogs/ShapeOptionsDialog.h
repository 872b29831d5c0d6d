#pragma once

#include <QDialog>

class QButtonGroup;
class QCheckBox;

// "Tool Options" of the rectangle and ellipse tools: "Draw From Center" and
// the draw style chosen among three pictures (outline, outline with the
// inside in the background colour, filled). Reads and writes "DrawStyle" and
// "DrawFromCenter" in section "PaintRect" or "PaintOval".
class ShapeOptionsDialog : public QDialog {
    Q_OBJECT
public:
    ShapeOptionsDialog(bool ellipse, QWidget* parent = nullptr);

    QCheckBox* FromCenter() const { return m_fromCenter; }
    QButtonGroup* Styles() const { return m_styles; }
    int DrawStyle() const;
    void accept() override;

    static void OpenForRectangle(QWidget* parent);
    static void OpenForEllipse(QWidget* parent);

private:
    const char* m_section;
    QCheckBox* m_fromCenter;
    QButtonGroup* m_styles;
};
