#include "dialogs/NumberTriple.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>

#include <algorithm>

NumberTriple::NumberTriple(int minimum, int maximum, int value, QWidget* parent)
    : QWidget(parent), m_minimum(minimum), m_maximum(maximum), m_edit(new QLineEdit(this)),
      m_upDown(new QSpinBox(this)), m_track(new QSlider(Qt::Horizontal, this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_edit->setMaxLength(6);
    m_edit->setFixedWidth(m_edit->fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 12);
    // The up-down control is wide enough to show every value of its range.
    m_upDown->setRange(minimum, maximum);
    m_upDown->setMinimumWidth(m_upDown->sizeHint().width());
    m_upDown->setToolTip(tr("Step the value"));
    m_track->setRange(minimum, maximum);
    m_track->setPageStep(10);
    m_track->setMinimumWidth(140);
    layout->addWidget(m_edit);
    layout->addWidget(m_upDown);
    layout->addWidget(m_track, 1);
    connect(m_edit, &QLineEdit::textEdited, this, &NumberTriple::FromEdit);
    connect(m_edit, &QLineEdit::editingFinished, this, &NumberTriple::CommitTyping);
    connect(m_upDown, &QSpinBox::valueChanged, this, &NumberTriple::FromControl);
    connect(m_track, &QSlider::valueChanged, this, &NumberTriple::FromControl);
    SetValue(value);
}

int NumberTriple::Value(bool* ok) const {
    bool valid = false;
    const int value = m_edit->text().trimmed().toInt(&valid);
    if (ok != nullptr) {
        *ok = valid;
    }
    return valid ? value : 0;
}

bool NumberTriple::InRange() const {
    bool ok = false;
    const int value = Value(&ok);
    return ok && value >= m_minimum && value <= m_maximum;
}

void NumberTriple::SetValue(int value) {
    m_edit->setText(QString::number(value));
    FromEdit();
}

void NumberTriple::SetPageStep(int step) {
    m_track->setPageStep(step);
}

void NumberTriple::FromEdit() {
    if (m_syncing) {
        return;
    }
    bool ok = false;
    const int typed = Value(&ok);
    // More digits only move a number away from zero: past the far end of the
    // range on its own side it can never come back in.
    const bool beyondForGood = (typed > m_maximum && typed >= 0) || (typed < m_minimum && typed < 0);
    if (m_clampTyping && ok && beyondForGood) {
        FromControl(std::clamp(typed, m_minimum, m_maximum));
        return;
    }
    if (!InRange()) {
        return;
    }
    m_syncing = true;
    const int value = Value();
    m_upDown->setValue(value);
    m_track->setValue(value);
    m_syncing = false;
    emit ValueChanged(value);
}

void NumberTriple::CommitTyping() {
    if (!m_clampTyping || InRange()) {
        return;
    }
    bool ok = false;
    const int typed = Value(&ok);
    FromControl(ok ? std::clamp(typed, m_minimum, m_maximum) : m_track->value());
}

void NumberTriple::FromControl(int value) {
    if (m_syncing) {
        return;
    }
    m_syncing = true;
    m_edit->setText(QString::number(value));
    m_upDown->setValue(value);
    m_track->setValue(value);
    m_syncing = false;
    emit ValueChanged(value);
}
