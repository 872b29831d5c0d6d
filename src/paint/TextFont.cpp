#include "paint/TextFont.h"

#include "platform/Settings.h"

namespace {

const char* const kSection = "Text";

std::uint8_t ReadByte(const char* key, int defaultValue) {
    return static_cast<std::uint8_t>(platform::Settings::ReadInt(kSection, key, defaultValue) & 0xFF);
}

} // namespace

TextFont TextFont::Read() {
    using platform::Settings;
    const TextFont defaults;
    TextFont font;
    font.height = Settings::ReadInt(kSection, "lfHeight", defaults.height);
    font.width = Settings::ReadInt(kSection, "lfWidth", defaults.width);
    font.escapement = Settings::ReadInt(kSection, "lfEscape", defaults.escapement);
    font.orientation = Settings::ReadInt(kSection, "lfOrient", defaults.orientation);
    font.weight = Settings::ReadInt(kSection, "lfWeight", defaults.weight);
    font.italic = ReadByte("lfItalic", defaults.italic);
    font.underline = ReadByte("lfUnderline", defaults.underline);
    font.strikeOut = ReadByte("lfStrikeout", defaults.strikeOut);
    font.charSet = ReadByte("lfCharset", defaults.charSet);
    font.outPrecision = ReadByte("lfOutPrecision", defaults.outPrecision);
    font.clipPrecision = ReadByte("lfClipPrecision", defaults.clipPrecision);
    font.quality = ReadByte("lfQuality", defaults.quality);
    font.pitchAndFamily = ReadByte("lfPitch", defaults.pitchAndFamily);
    font.faceName = Settings::ReadString(kSection, "lfFaceName", defaults.faceName);
    return font;
}

void TextFont::Write() const {
    using platform::Settings;
    Settings::WriteInt(kSection, "lfHeight", height);
    Settings::WriteInt(kSection, "lfWidth", width);
    Settings::WriteInt(kSection, "lfEscape", escapement);
    Settings::WriteInt(kSection, "lfOrient", orientation);
    Settings::WriteInt(kSection, "lfWeight", weight);
    Settings::WriteInt(kSection, "lfItalic", italic);
    Settings::WriteInt(kSection, "lfUnderline", underline);
    Settings::WriteInt(kSection, "lfStrikeout", strikeOut);
    Settings::WriteInt(kSection, "lfCharset", charSet);
    Settings::WriteInt(kSection, "lfOutPrecision", outPrecision);
    Settings::WriteInt(kSection, "lfClipPrecision", clipPrecision);
    Settings::WriteInt(kSection, "lfQuality", quality);
    Settings::WriteInt(kSection, "lfPitch", pitchAndFamily);
    Settings::WriteString(kSection, "lfFaceName", faceName);
}

std::string TextFont::ReadInput() {
    return platform::Settings::ReadString(kSection, "Input", "");
}

void TextFont::WriteInput(const std::string& text) {
    platform::Settings::WriteString(kSection, "Input", text);
}
