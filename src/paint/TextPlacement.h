#pragma once

#include <string>

struct CommandContext;
struct EditResult;
struct TextFont;

// Puts one line of text into the picture at image point (x, y) as a floating
// selection: its pixels are the foreground colour of the moment, its mask the
// shape of the glyphs. The floating rectangle is as high as the font's cell
// and as wide as the text (an italic font one average character wider). One
// undo step of kind 5; a floating selection that existed is stamped first.
//
// Empty text places nothing, but a floating selection that existed is still
// put down as that undo step, and no floating selection remains (1; 0 when
// there was none, and nothing changes).
//
// Returns 1 when text was placed. No font engine to draw with changes nothing
// (0). When the floating selection cannot be made, the "free disk space"
// message is shown and nothing changes (0).
int PlaceText(CommandContext& context, const TextFont& font, const std::string& text, int x, int y,
              EditResult& result);
