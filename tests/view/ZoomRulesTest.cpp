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

TEST(ZoomRules, StepsSkipZeroAndMinusOneAndStopAtEight) {
    EXPECT_EQ(StepsOut(1, 8, 640, 480), (std::vector<int>{-2, -3, -4, -5, -6, -7, -8, -8}));
    EXPECT_EQ(StepsIn(-8, 15, 640, 480),
              (std::vector<int>{-7, -6, -5, -4, -3, -2, 1, 2, 3, 4, 5, 6, 7, 8, 8}));
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
