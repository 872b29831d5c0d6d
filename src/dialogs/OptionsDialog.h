#pragma once

#include <QDialog>

class NumberTriple;
class QComboBox;
class QCheckBox;
class QSpinBox;

struct OptionsValues {
    int jpegQuality = 80;
    int displayMode = 0;
    bool pressureSimulation = false;
    // The largest picture loaded at full size (applies from the next start).
    int maxLoadWidth = 1920;
    int maxLoadHeight = 2560;
    // Undo: how many steps and how much memory the history keeps.
    int undoSteps = 100;
    int undoMemoryMB = 1024;
    // Pictures larger than the window open fitted to it.
    bool fitLargePictures = true;
};

// "Options": JPEG quality, display optimisation, pen pressure simulation and
// the size up to which pictures are loaded without reduction, and how many
// undo steps are kept in how much memory.
class OptionsDialog : public QDialog {
    Q_OBJECT
public:
    OptionsDialog(const OptionsValues& values, QWidget* parent = nullptr);

    OptionsValues Values() const;
    NumberTriple* Quality() const { return m_quality; }
    QComboBox* DisplayMode() const { return m_display; }
    QCheckBox* Pressure() const { return m_pressure; }
    QCheckBox* FitLargePictures() const { return m_fit; }
    QSpinBox* MaxLoadWidth() const { return m_maxWidth; }
    QSpinBox* MaxLoadHeight() const { return m_maxHeight; }
    QSpinBox* UndoSteps() const { return m_undoSteps; }
    QSpinBox* UndoMemory() const { return m_undoMemory; }

    // Keeps the dialog open with a message when the quality is out of range.
    void accept() override;

private:
    NumberTriple* m_quality;
    QComboBox* m_display;
    QCheckBox* m_pressure;
    QCheckBox* m_fit;
    QSpinBox* m_maxWidth;
    QSpinBox* m_maxHeight;
    QSpinBox* m_undoSteps;
    QSpinBox* m_undoMemory;
};
