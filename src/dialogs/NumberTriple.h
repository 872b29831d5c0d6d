#pragma once

#include <QWidget>

class QLineEdit;
class QSpinBox;
class QSlider;

// One number shown three ways and kept in step: an edit box, a decimal
// up-down control and a track bar. Typing is free; Value() reports what the
// edit box holds (possibly out of range, so that the dialog can say so).
class NumberTriple : public QWidget {
    Q_OBJECT
public:
    NumberTriple(int minimum, int maximum, int value, QWidget* parent = nullptr);

    // The typed number; `ok` is false when the edit box holds no number.
    int Value(bool* ok = nullptr) const;
    void SetValue(int value);
    bool InRange() const;
    // With clamping on, a typed number outside the range is pulled into it and
    // written back: at once when further digits could only take it further
    // out, else when editing ends (so "12" can be typed into 2..16).
    void SetClampTyping(bool clamp) { m_clampTyping = clamp; }
    void SetPageStep(int step);
    // Clamps what the edit box holds now, as when editing ends.
    void CommitTyping();
    int Minimum() const { return m_minimum; }
    int Maximum() const { return m_maximum; }
    QLineEdit* Edit() const { return m_edit; }
    QSpinBox* UpDown() const { return m_upDown; }
    QSlider* TrackBar() const { return m_track; }

signals:
    void ValueChanged(int value);

private:
    void FromEdit();
    void FromControl(int value);

    int m_minimum;
    int m_maximum;
    QLineEdit* m_edit;
    QSpinBox* m_upDown;
    QSlider* m_track;
    bool m_syncing = false;
    bool m_clampTyping = false;
};
