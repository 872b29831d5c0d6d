#include "view/ZoomRules.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

std::vector<int> StepsIn(int from, int count, int w, int h) {
    std::vector<int> codes;
    for (int i = 0; i < count; ++i) {
        zoom::StepIn(from, w, h);
        codes.push_back(from);
    }
    return codes;
}

std::vector<int> StepsOut(int from, int count, int w, int h) {
    std::vector<int> codes;
    for (int i = 0; i < count; ++i) {
        zoom::StepOut(from, w, h);
        codes.push_back(from);
    }
    return codes;
}

TEST(ZoomRules, StepsSkipZeroAndMinusOneAndDoubleBeyondEight) {
    EXPECT_EQ(StepsOut(1, 8, 640, 480), (std::vector<int>{-2, -3, -4, -5, -6, -7, -8, -8}));
    EXPECT_EQ(StepsIn(-8, 17, 640, 480),
              (std::vector<int>{-7, -6, -5, -4, -3, -2, 1, 2, 3, 4, 5, 6, 7, 8, 16, 32, 32}));
    EXPECT_EQ(StepsOut(32, 4, 640, 480), (std::vector<int>{16, 8, 7, 6}));
    // 1000 x 32 = 32000: x 32 is beyond the limit, x 16 is not.
    EXPECT_EQ(StepsIn(8, 3, 1000, 10), (std::vector<int>{16, 16, 16}));
    EXPECT_EQ(zoom::CodeBelow(16), 8);
    EXPECT_EQ(zoom::CodeBelow(32), 16);
    EXPECT_EQ(zoom::CodeBelow(5), 4);
    EXPECT_EQ(zoom::Normalised(0), 1);
    EXPECT_EQ(zoom::Normalised(-1), 1);
}

TEST(ZoomRules, RefusesSizesBeyondTheLimitAndVanishingPictures) {
    // 5000 x 7 = 35000 > 30000: the step is refused, the code stays.
    int code = 6;
    EXPECT_FALSE(zoom::StepIn(code, 5000, 10));
    EXPECT_EQ(code, 6);
    code = 5;
    EXPECT_TRUE(zoom::StepIn(code, 5000, 10));
    EXPECT_EQ(code, 6);
    // A 3-pixel side goes to 1/3 (3 - 3 = 0) but not on to 1/4 (3 - 4 < 0).
    code = -2;
    EXPECT_TRUE(zoom::StepOut(code, 3, 100));
    EXPECT_EQ(code, -3);
    EXPECT_FALSE(zoom::StepOut(code, 3, 100));
    EXPECT_EQ(code, -3);
}

TEST(ZoomRules, MenuEnablingFollowsTheLimits) {
    // "x 8" on 5000 x 10: 7 >= trunc(30000 / 5000) = 6.
    EXPECT_FALSE(zoom::CanMagnifyTo(8, 5000, 10));
    EXPECT_TRUE(zoom::CanMagnifyTo(6, 5000, 10));
    EXPECT_FALSE(zoom::CanMagnifyTo(7, 5000, 10));
    // "/ 8" on 5 x 100: min side 5 - 7 < 1.
    EXPECT_FALSE(zoom::CanReduceTo(8, 5, 100));
    EXPECT_TRUE(zoom::CanReduceTo(5, 5, 100));
    EXPECT_FALSE(zoom::CanReduceTo(6, 5, 100));
    // x 16 and x 32 keep the picture within 30000 pixels too.
    EXPECT_TRUE(zoom::CanMagnifyTo(32, 937, 100));
    EXPECT_FALSE(zoom::CanMagnifyTo(32, 938, 100));
    EXPECT_TRUE(zoom::CanMagnifyTo(16, 938, 100));
}

TEST(ZoomRules, FitChoosesTheLargestCodeThatShowsTheWholePicture) {
    EXPECT_EQ(zoom::FitCode(4000, 3000, 1280, 800), -4); // 1/3 is 1000 high
    EXPECT_EQ(zoom::FitCode(1280, 800, 1280, 800), 1);
    EXPECT_EQ(zoom::FitCode(100, 50, 1280, 800), 8); // x 16 would be 1600 wide
    EXPECT_EQ(zoom::FitCode(30, 20, 1280, 800), 32);
    EXPECT_EQ(zoom::FitCode(1000, 10, 40000, 40000), 16) << "never beyond 30000 pixels";
    EXPECT_EQ(zoom::FitCode(90000, 100, 800, 600), -8) << "the strongest reduction when nothing fits";
}

TEST(ZoomRules, ScreenOffsetsMapToImagePixels) {
    EXPECT_EQ(zoom::ScreenOffsetToImage(0, 3), 0);
    EXPECT_EQ(zoom::ScreenOffsetToImage(2, 3), 0);
    EXPECT_EQ(zoom::ScreenOffsetToImage(3, 3), 1);
    EXPECT_EQ(zoom::ScreenOffsetToImage(-1, 3), 0); // truncation toward zero
    EXPECT_EQ(zoom::ScreenOffsetToImage(5, -2), 10);
    EXPECT_EQ(zoom::SnapToGrid(17, 4), 16);
    EXPECT_EQ(zoom::SnapToGrid(17, -4), 16);
    EXPECT_EQ(zoom::SnapToGrid(17, 1), 17);
}

TEST(ZoomRules, CaptionSuffix) {
    EXPECT_EQ(zoom::CaptionSuffix(1), "(x1)");
    EXPECT_EQ(zoom::CaptionSuffix(3), "(x3)");
    EXPECT_EQ(zoom::CaptionSuffix(-4), "(1/4)");
}

} // namespace
