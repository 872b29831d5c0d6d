#pragma once

#include "paint/TextFont.h"

#include <QDialog>
#include <string>

class QCheckBox;
class QComboBox;
class QFontComboBox;
class QLabel;
class QLineEdit;

// "Input Text": the line of text to place and the font to set it in (face,
// size in pixels, "Bold", "Italic", "Underline", "StrikeOut"), with a
// "Sample:" preview drawn in the font as it will be placed. The fields of the
// font description that the dialog does not show are handed back unchanged.
class InputTextDialog : public QDialog {
    Q_OBJECT
public:
    InputTextDialog(const TextFont& font, const std::string& text, QWidget* parent = nullptr);

    TextFont Font() const;
    std::string Text() const;

    QLineEdit* TextEdit() const { return m_text; }
    QFontComboBox* FaceBox() const { return m_face; }
    QComboBox* SizeBox() const { return m_size; }
    QCheckBox* BoldBox() const { return m_bold; }
    QCheckBox* ItalicBox() const { return m_italic; }
    QCheckBox* UnderlineBox() const { return m_underline; }
    QCheckBox* StrikeOutBox() const { return m_strikeOut; }
    QLabel* Sample() const { return m_sample; }

private:
    void UpdateSample();

    TextFont m_original;
    QString m_originalSize;
    QLineEdit* m_text;
    QFontComboBox* m_face;
    QComboBox* m_size;
    QCheckBox* m_bold;
    QCheckBox* m_italic;
    QCheckBox* m_underline;
    QCheckBox* m_strikeOut;
    QLabel* m_sample;
};
