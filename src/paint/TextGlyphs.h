#pragma once

#include "paint/TextFont.h"

#include <QFont>
#include <memory>
#include <string>

class CDibImage;

// One line of text in the text tool's font, measured and drawn by the
// system's font engine (the font database of QtGui) at 72 dots per inch.
// A face that is missing is matched by the font engine; "Courier New" falls
// back to the system's monospace face.
class TextGlyphs {
public:
    // Makes the font; false when there is no font engine to make it with
    // (a run without a graphical application).
    bool SetFont(const TextFont& font);
    const QFont& Font() const { return m_font; }
    // The face the font engine actually uses.
    std::string FaceInUse() const;

    // Width of the text's advance, plus one average character width for an
    // italic font so that the last slanted glyph is not cut.
    int Width(const std::string& text) const;
    // The font's cell height: ascent plus descent.
    int Height() const;
    int AverageCharWidth() const;

    // A new 1-bit mask of width x height in which the glyphs' pixels are set,
    // the text drawn on one line from the top-left; null on lack of memory.
    std::unique_ptr<CDibImage> RenderMask(const std::string& text, int width, int height) const;

    // The QtGui font a description stands for.
    static QFont MakeFont(const TextFont& font);

private:
    QFont m_font;
    bool m_ready = false;
};
