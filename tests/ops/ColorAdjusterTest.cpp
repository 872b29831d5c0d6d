#include "ops/CColorAdjuster.h"
#include "ops/OpsTestImages.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using Table = std::array<std::uint8_t, 256>;

Table Contrast(int v) {
    Table table{};
    CColorAdjuster::ContrastTable(v, table.data());
    return table;
}

Table Identity() {
    Table table{};
    for (int i = 0; i < 256; ++i) {
        table[i] = static_cast<std::uint8_t>(i);
    }
    return table;
}

TEST(ColorAdjuster, ContrastTables) {
    EXPECT_EQ(Contrast(0), Identity());
    const Table threshold = Contrast(100);
    EXPECT_EQ(threshold[128], 0);
    EXPECT_EQ(threshold[129], 255);
    EXPECT_EQ(threshold[0], 0);
    Table grey{};
    grey.fill(128);
    EXPECT_EQ(Contrast(-100), grey);

    const Table steeper = Contrast(50); // m = 64
    EXPECT_EQ(steeper[65], 0);
    EXPECT_EQ(steeper[66], 2);
    EXPECT_EQ(steeper[192], 255);
    const Table flatter = Contrast(-50);
    EXPECT_EQ(flatter[0], 64);
    EXPECT_EQ(flatter[255], 191);
}

TEST(ColorAdjuster, BrightnessMovesTowardWhiteOrBlack) {
    Table table = Identity();
    CColorAdjuster::BrightnessTable(0, table.data());
    EXPECT_EQ(table, Identity());
    CColorAdjuster::BrightnessTable(100, table.data());
    Table white{};
    white.fill(255);
    EXPECT_EQ(table, white);
    table = Identity();
    CColorAdjuster::BrightnessTable(-100, table.data());
    EXPECT_EQ(table, Table{});
    table = Identity();
    CColorAdjuster::BrightnessTable(50, table.data()); // k = 128
    EXPECT_EQ(table[100], 100 + ((155 * 128 + 128) >> 8));
}

TEST(ColorAdjuster, GammaTables) {
    Table table{};
    CColorAdjuster::GammaTable(10, table.data());
    EXPECT_EQ(table, Identity());
    Table strongest{};
    CColorAdjuster::GammaTable(79, strongest.data());
    EXPECT_GT(strongest[64], 180);
    EXPECT_EQ(strongest[0], 0);
    EXPECT_EQ(strongest[255], 255);
    Table weakest{};
    CColorAdjuster::GammaTable(1, weakest.data());
    CColorAdjuster::GammaTable(80, table.data()); // beyond the range counts as 0, then 1
    EXPECT_EQ(table, weakest);
    for (int i = 1; i < 256; ++i) {
        ASSERT_GE(strongest[i], strongest[i - 1]);
        ASSERT_GE(weakest[i], weakest[i - 1]);
    }
}

ColorWord HueSaturation(ColorWord color, int hue, int saturation) {
    auto source = SolidImage(1, 1, color);
    auto result = RunInto<CColorAdjuster>(
        *source, [&](CColorAdjuster& a) { return a.ApplyHueSaturation(hue, saturation); });
    return result->GetPixel(0, 0);
}

TEST(ColorAdjuster, HueSaturationRoundTrip) {
    EXPECT_EQ(HueSaturation(MakeColorWord(255, 0, 0), 180, 0), MakeColorWord(0, 255, 255));
    EXPECT_EQ(HueSaturation(MakeColorWord(255, 0, 0), 120, 0), MakeColorWord(0, 255, 0));
    EXPECT_EQ(HueSaturation(MakeColorWord(0, 0, 255), -120, 0), MakeColorWord(0, 255, 0));
    for (int level : {0, 77, 255}) {
        EXPECT_EQ(HueSaturation(Grey(level), 90, 100), Grey(level));
    }
    // -100 % leaves a saturation of 1: (-100 x 191 + 50) / 100 truncates to -190.
    EXPECT_EQ(HueSaturation(MakeColorWord(200, 100, 50), 0, -100), MakeColorWord(200, 200, 199));
    EXPECT_EQ(HueSaturation(MakeColorWord(200, 100, 50), 0, 0), MakeColorWord(200, 100, 50));
}

TEST(ColorAdjuster, TablesMapEachChannel) {
    auto source = MakeGradientImage(9, 4);
    auto result = RunInto<CColorAdjuster>(*source, [](CColorAdjuster& a) {
        a.BuildBrightnessContrast(0, 0, -100, 0, 0, 0); // red to black only
        return a.ApplyTables();
    });
    for (int x = 0; x < 9; ++x) {
        const ColorWord in = source->GetPixel(x, 2);
        EXPECT_EQ(result->GetPixel(x, 2), MakeColorWord(0, GreenOf(in), BlueOf(in)));
    }
}

} // namespace
