#pragma once

#include "paint/TextFont.h"
#include "tools/select/AToolSelect.h"

#include <string>

// "Input Text": a tap (pen up) at a point asks for a line of text and its
// font, then puts the text there as a floating selection in the foreground
// colour, shaped like its glyphs. Because the text is a floating selection,
// the tool is a selection tool: a press on the floating text drags it, and
// the selection commands put it down or discard it.
class AToolPaintText : public AToolSelect {
public:
    // Reads the font description from the settings.
    AToolPaintText();

    const TextFont& Font() const { return m_font; }
    // Writes the whole font description back to the settings.
    void SaveFont() const;
    // Places `text` at image point `at` in the tool's font; 1 when placed.
    int PlaceTextAt(const std::string& text, QPoint at);

protected:
    bool OffersHandles() const override { return false; }
    void FinishShape(const PenEvent& pen, QPoint image) override;

private:
    TextFont m_font;
};
