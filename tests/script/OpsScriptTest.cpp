#include "script/OpsScript.h"
#include "image/DocumentFixture.h"
#include "ops/OpsCommandTable.h"

namespace {

class OpsScriptTest : public DocumentTest {
protected:
    CommandContext ctx{doc, undo};
};

TEST_F(OpsScriptTest, ReadsNamesValuesAndDefaults) {
    OpsScript script;
    ASSERT_TRUE(script.Add("emboss=3"));
    ASSERT_TRUE(script.Add("rotate=30,ccw"));
    ASSERT_TRUE(script.Add("gamma=12,10,8"));
    ASSERT_TRUE(script.Add("undo"));
    const auto& steps = script.Steps();
    ASSERT_EQ(steps.size(), 4u);
    EXPECT_EQ(steps[0].values, (std::vector<int>{3, 2}));
    EXPECT_EQ(steps[1].values, (std::vector<int>{30, 1}));
    EXPECT_EQ(steps[2].given, 3);
    EXPECT_EQ(steps[3].command, nullptr);
}

TEST_F(OpsScriptTest, RefusesBadWordsWithTheDialogsMessage) {
    OpsScript script;
    EXPECT_FALSE(script.Add("sharpen-huge"));
    EXPECT_FALSE(script.Add("invert=1"));
    EXPECT_FALSE(script.Add("gamma=10,10")); // one value or three
    EXPECT_FALSE(script.Add("mosaic=x"));
    EXPECT_FALSE(script.Add("mosaic=17"));
    EXPECT_NE(script.Error().find("(2..16)"), std::string::npos);
    EXPECT_FALSE(script.Add("rotate=360"));
    EXPECT_EQ(script.Error(), "The degree is out of the range (0..359).");
    EXPECT_FALSE(script.Add("rotate=90,left"));
    EXPECT_TRUE(script.Steps().empty());
}

TEST_F(OpsScriptTest, RunsStepsInOrderWithUndoAndRedo) {
    OpsScript script;
    for (const char* word : {"invert", "flip-h", "undo", "redo", "undo"}) {
        ASSERT_TRUE(script.Add(word)) << word;
    }
    EXPECT_EQ(script.Run(ctx), -1);
    // Inverted, flipped, flip undone, redone, undone again: inverted only.
    EXPECT_EQ(doc.GetPicture()->GetPixel(0, 0), ~original->GetPixel(0, 0) & 0xFFFFFF);
    EXPECT_TRUE(undo.CanRedo(&doc));

    OpsScript failing;
    ASSERT_TRUE(failing.Add("gray"));
    ASSERT_TRUE(failing.Add("redo"));
    EXPECT_EQ(failing.Run(ctx), 1); // a fresh step has nothing to redo
}

TEST(OpsScriptColor, ParsesSixHexDigitsAsRedGreenBlue) {
    ColorWord color = 0;
    ASSERT_TRUE(ParseHexColor("0000FF", color));
    EXPECT_EQ(color, MakeColorWord(0, 0, 255));
    ASSERT_TRUE(ParseHexColor("a0b1c2", color));
    EXPECT_EQ(color, MakeColorWord(0xA0, 0xB1, 0xC2));
    EXPECT_FALSE(ParseHexColor("FFF", color));
    EXPECT_FALSE(ParseHexColor("GG0000", color));
}

} // namespace
