#pragma once

#include <cstdint>
#include <string>

// The text tool's font description: the fields of a classic logical-font
// record, each kept in the settings section "Text" under its own value name.
// Heights are in pixels; a negative height is the character height (the em
// size), a positive one the cell height (ascent plus descent), 0 the default.
struct TextFont {
    std::int32_t height = -12;
    std::int32_t width = 0; // average character width, 0 for the face's own
    std::int32_t escapement = 0;
    std::int32_t orientation = 0;
    std::int32_t weight = 400; // 400 regular, 700 bold
    std::uint8_t italic = 0;
    std::uint8_t underline = 0;
    std::uint8_t strikeOut = 0;
    std::uint8_t charSet = 255;
    std::uint8_t outPrecision = 0;
    std::uint8_t clipPrecision = 0;
    std::uint8_t quality = 0;
    std::uint8_t pitchAndFamily = 0;
    std::string faceName = "Courier New";

    static constexpr int kBoldWeight = 700;
    static constexpr int kRegularWeight = 400;

    bool IsBold() const { return weight >= 600; }

    // Every field from the settings, each with its default.
    static TextFont Read();
    // Writes every field back.
    void Write() const;

    // The last text typed ("Text"/"Input").
    static std::string ReadInput();
    static void WriteInput(const std::string& text);

    bool operator==(const TextFont&) const = default;
};
