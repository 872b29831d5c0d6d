#include "paint/TextFont.h"
#include "platform/Settings.h"

#include <gtest/gtest.h>

TEST(TextFontTest, EveryFieldTravelsUnderItsOwnValueNameWithItsDefault) {
    EXPECT_EQ(TextFont::Read(), TextFont{}) << "nothing stored yet: the defaults";
    EXPECT_EQ(TextFont{}.faceName, "Courier New");
    EXPECT_EQ(TextFont{}.charSet, 255);

    TextFont font;
    font.height = -31;
    font.width = 7;
    font.escapement = 900;
    font.orientation = 450;
    font.weight = 700;
    font.italic = 1;
    font.underline = 1;
    font.strikeOut = 1;
    font.charSet = 0;
    font.outPrecision = 3;
    font.clipPrecision = 2;
    font.quality = 4;
    font.pitchAndFamily = 0x31;
    font.faceName = "DejaVu Serif";
    font.Write();
    EXPECT_EQ(TextFont::Read(), font);
    EXPECT_EQ(platform::Settings::ReadInt("Text", "lfStrikeout", -1), 1);
    EXPECT_EQ(platform::Settings::ReadString("Text", "lfFaceName", ""), "DejaVu Serif");

    TextFont::WriteInput("Hello");
    EXPECT_EQ(platform::Settings::ReadString("Text", "Input", ""), "Hello");
    TextFont{}.Write();
}
