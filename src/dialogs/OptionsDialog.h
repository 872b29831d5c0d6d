#pragma once

#include <QDialog>

class NumberTriple;
class QComboBox;
class QCheckBox;

struct OptionsValues {
    int jpegQuality = 80;
    int displayMode = 0;
    bool pressureSimulation = false;
};

// "Options": JPEG quality, display optimisation and pen pressure simulation.
class OptionsDialog : public QDialog {
    Q_OBJECT
public:
    OptionsDialog(const OptionsValues& values, QWidget* parent = nullptr);

    OptionsValues Values() const;
    NumberTriple* Quality() const { return m_quality; }
    QComboBox* DisplayMode() const { return m_display; }
    QCheckBox* Pressure() const { return m_pressure; }

    // Keeps the dialog open with a message when the quality is out of range.
    void accept() override;

private:
    NumberTriple* m_quality;
    QComboBox* m_display;
    QCheckBox* m_pressure;
};
