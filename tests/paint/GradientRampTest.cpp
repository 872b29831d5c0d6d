#include "paint/GradientRamp.h"
#include "paint/HsvColor.h"
#include "support/ImageFixtures.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr ColorWord kStart = MakeColorWord(200, 30, 90);
constexpr ColorWord kEnd = MakeColorWord(10, 220, 140);

GradientRamp Ramp(int shape, int mode = GradientRamp::kRgb, ColorWord start = kStart, ColorWord end = kEnd) {
    GradientRamp ramp;
    ramp.SetShape(shape);
    ramp.SetColorMode(mode);
    ramp.SetColors(start, end);
    ramp.BuildTable();
    return ramp;
}

} // namespace

TEST(GradientRamp, EndEntriesAreExactInEveryColourMode) {
    const ColorWord colors[] = {
        0x000000, 0xFFFFFF, 0x0000FF, 0x808080, kStart, kEnd, MakeColorWord(255, 1, 254)};
    for (int mode = 0; mode < 3; ++mode) {
        for (const ColorWord a : colors) {
            for (const ColorWord b : colors) {
                const GradientRamp ramp = Ramp(GradientRamp::kLinear, mode, a, b);
                EXPECT_EQ(ramp.Entry(0), a) << mode;
                EXPECT_EQ(ramp.Entry(GradientRamp::kLast), b) << mode;
            }
        }
    }
    const GradientRamp rgb = Ramp(GradientRamp::kLinear, GradientRamp::kRgb, 0x000000, 0x0000FF);
    EXPECT_EQ(RedOf(rgb.Entry(1)), 0);     // 0.2127 rounds down
    EXPECT_EQ(RedOf(rgb.Entry(600)), 128); // 127.6 rounds up
}

TEST(GradientRamp, HueModesTurnTheRightWay) {
    for (const int mode : {GradientRamp::kHueClockwise, GradientRamp::kHueCounterClockwise}) {
        const GradientRamp red = Ramp(GradientRamp::kLinear, mode, 0x0000FF, 0x0000FF);
        for (int i = 0; i < GradientRamp::kEntries; i += 37) {
            EXPECT_EQ(red.Entry(i), 0x0000FFu) << "equal hues need no wrap";
        }
    }
    // Red (hue 0) to blue (240): counter-clockwise rises through green,
    // clockwise falls through magenta.
    const GradientRamp ccw =
        Ramp(GradientRamp::kLinear, GradientRamp::kHueCounterClockwise, 0x0000FF, 0xFF0000);
    const GradientRamp cw = Ramp(GradientRamp::kLinear, GradientRamp::kHueClockwise, 0x0000FF, 0xFF0000);
    EXPECT_EQ(ccw.Entry(600), MakeColorWord(0, 255, 0));
    EXPECT_EQ(cw.Entry(600), MakeColorWord(255, 0, 255));

    EXPECT_EQ(HsvFromColor(MakeColorWord(255, 0, 10)).hue, -1) << "not wrapped: (-600 + 127) / 255";
    EXPECT_EQ(ColorFromHsv(-2, 255, 255), MakeColorWord(255, 0, 9)); // sector 5, q = 255 - 246
    EXPECT_EQ(ColorFromHsv(480, 255, 255), ColorFromHsv(120, 255, 255));
}

TEST(GradientRender, LinearBandsFollowTheDrag) {
    auto image = MakeImage(30, 20);
    GradientRamp vertical = Ramp(GradientRamp::kLinear);
    ASSERT_EQ(vertical.Render(*image, 7, 5, 7, 15), 1);
    for (int y = 0; y < 20; ++y) {
        const int expected = y <= 5 ? 0 : y >= 15 ? 1199 : (y - 5) * 1199 / 10;
        for (int x = 0; x < 30; ++x) {
            ASSERT_EQ(image->GetPixel(x, y), vertical.Entry(expected)) << x << "," << y;
        }
    }
    GradientRamp slanted = Ramp(GradientRamp::kLinear);
    ASSERT_EQ(slanted.Render(*image, 5, 5, 25, 15), 1);
    EXPECT_EQ(image->GetPixel(5, 5), kStart);
    EXPECT_EQ(image->GetPixel(0, 0), kStart);
    EXPECT_EQ(image->GetPixel(25, 15), kEnd);
    EXPECT_EQ(image->GetPixel(29, 19), kEnd);
    // Pixels on one perpendicular to the drag share a colour.
    EXPECT_EQ(image->GetPixel(15, 10), image->GetPixel(14, 12));
    EXPECT_EQ(image->GetPixel(15, 10), image->GetPixel(16, 8));

    auto untouched = DuplicateImage(image.get());
    EXPECT_EQ(slanted.Render(*image, 4, 4, 4, 4), 0);
    EXPECT_TRUE(SamePixels(*image, *untouched));
}

TEST(GradientRender, RadialRectangleAndCone) {
    auto image = MakeImage(41, 31);
    GradientRamp radial = Ramp(GradientRamp::kRadial);
    ASSERT_EQ(radial.Render(*image, 20, 15, 28, 21), 1); // r = 10
    EXPECT_EQ(image->GetPixel(20, 15), kStart);
    for (int y = 0; y < 31; ++y) {
        for (int x = 0; x < 41; ++x) {
            if ((x - 20) * (x - 20) + (y - 15) * (y - 15) >= 100) {
                ASSERT_EQ(image->GetPixel(x, y), kEnd) << x << "," << y;
            }
        }
    }
    EXPECT_EQ(image->GetPixel(25, 15), radial.Entry(600)); // d 5: round(599.5)
    ASSERT_EQ(radial.Render(*image, 12, 9, 3, 21), 1);     // r = 15, centre off the middle
    for (int y = 0; y < 31; ++y) {
        const int dy = 9 - y;
        const int w = dy * dy <= 225 ? static_cast<int>(std::sqrt(225.0 - dy * dy) + 0.5) : -1;
        for (int x = 0; x < 41; ++x) {
            const int d = static_cast<int>(std::sqrt(dy * dy + (x - 12) * (x - 12)) + 0.5);
            const int index = std::abs(x - 12) < w ? std::min(1199, (2 * d * 1199 + 15) / 30) : 1199;
            ASSERT_EQ(image->GetPixel(x, y), radial.Entry(index)) << x << "," << y;
        }
    }

    GradientRamp rectangle = Ramp(GradientRamp::kRectangle);
    ASSERT_EQ(rectangle.Render(*image, 10, 5, 30, 25), 1); // half 10
    EXPECT_EQ(image->GetPixel(10, 12), kEnd);
    EXPECT_EQ(image->GetPixel(30, 25), kEnd);
    EXPECT_EQ(image->GetPixel(20, 15), kStart);
    EXPECT_EQ(image->GetPixel(0, 0), kEnd);
    EXPECT_EQ(image->GetPixel(15, 15), rectangle.Entry(1199 - 600));

    GradientRamp cone = Ramp(GradientRamp::kCone);
    // Against the angle computed per pixel, for drags in every direction and a
    // centre outside the picture.
    const int drags[][4] = {
        {20, 15, 30, 15}, {20, 15, 3, 2}, {20, 15, 20, 0}, {-5, 40, 10, 41}, {7, 7, 7, 30}};
    for (const auto& d : drags) {
        ASSERT_EQ(cone.Render(*image, d[0], d[1], d[2], d[3]), 1);
        const double reference = std::atan2(d[3] - d[1], d[2] - d[0]);
        int wrong = 0;
        for (int y = 0; y < 31; ++y) {
            for (int x = 0; x < 41; ++x) {
                double angle = std::atan2(y - d[1], x - d[0]) - reference;
                angle = angle < 0 ? angle + 6.283185308 : angle;
                const int exact = std::min(1199, static_cast<int>(angle * 190.8267767422657 + 0.5));
                wrong += image->GetPixel(x, y) == cone.Entry(exact) ? 0 : 1;
            }
        }
        EXPECT_EQ(wrong, 0) << d[0] << "," << d[1] << " to " << d[2] << "," << d[3];
    }
    ASSERT_EQ(cone.Render(*image, 20, 15, 30, 15), 1);
    EXPECT_EQ(image->GetPixel(40, 15), kStart) << "the reference direction";
    EXPECT_EQ(image->GetPixel(20, 30), cone.Entry(300)) << "straight down is a quarter turn";
}
