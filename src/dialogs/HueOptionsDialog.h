#pragma once

#include <QDialog>

class QRadioButton;

// "Hue Options": whether the Hue brush gives the pixels under the pen the
// foreground colour's hue alone or its hue and saturation. Kept under
// "PaintHue"/"UseColor" (0 hue only, 1 hue and saturation).
class HueOptionsDialog : public QDialog {
    Q_OBJECT
public:
    explicit HueOptionsDialog(QWidget* parent = nullptr);

    static bool ReadUseColor();
    // The palette's options request for the Hue tool.
    static void Open(QWidget* parent);

    QRadioButton* HueOnly() const { return m_hueOnly; }
    QRadioButton* HueAndSaturation() const { return m_hueAndSaturation; }

    void accept() override;

private:
    QRadioButton* m_hueOnly;
    QRadioButton* m_hueAndSaturation;
};
