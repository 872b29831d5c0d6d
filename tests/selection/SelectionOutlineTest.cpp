#include "selection/SelectionOutline.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

namespace {

using PixelSet = std::set<std::pair<int, int>>;

PixelSet Pixels(const SelectionOutline& outline) {
    PixelSet pixels;
    outline.ForEachPixel([&](int x, int y) { pixels.insert({x, y}); });
    return pixels;
}

OutlineViewport View(int zoom, int width = 100, int height = 100) {
    OutlineViewport view;
    view.visibleWidth = width;
    view.visibleHeight = height;
    view.zoom = zoom;
    return view;
}

} // namespace

TEST(SelectionOutline, TracesTheBorderPixelsOfTheMask) {
    auto mask = CreateMask(5, 3, false); // width not a multiple of 8
    SelectionOutline outline;
    outline.Build(mask.get(), 10, 20, View(1));
    const PixelSet pixels = Pixels(outline);
    // Every border pixel of the 5 x 3 block, and nothing inside or outside.
    EXPECT_EQ(pixels.size(), 12u);
    EXPECT_TRUE(pixels.count({10, 20}) && pixels.count({14, 22}) && pixels.count({14, 20}));
    EXPECT_FALSE(pixels.count({12, 21}));
    EXPECT_FALSE(pixels.count({15, 20})) << "bits beyond the width are clear, not selected";

    outline.Build(mask.get(), 10, 20, View(1, 12, 100));
    EXPECT_EQ(Pixels(outline).size(), 5u) << "only columns 10 and 11: the left edge, two tops, two bottoms";
    outline.Build(nullptr, 0, 0, View(1));
    EXPECT_TRUE(outline.IsEmpty());
}

TEST(SelectionOutline, ZoomedBordersAreRunsAlongThePixelEdges) {
    auto mask = CreateMask(2, 1, false);
    SelectionOutline outline;
    outline.Build(mask.get(), 1, 1, View(4));
    const auto& entries = outline.Entries();
    ASSERT_GE(entries.size(), 2u);
    EXPECT_EQ(entries[0], (OutlineEntry{4, 4}));
    EXPECT_EQ(entries[1], (OutlineEntry{0, -3})) << "the left edge runs down the zoomed pixel";
    const PixelSet pixels = Pixels(outline);
    EXPECT_TRUE(pixels.count({11, 4})) << "top edge of the second pixel";
    EXPECT_TRUE(pixels.count({11, 7})) << "right edge: the far column of the last pixel";
    EXPECT_TRUE(pixels.count({4, 7})) << "bottom edge: the far row";
    EXPECT_EQ(pixels.size(), 20u); // the 8 x 4 rectangle's border

    auto big = CreateMask(8, 8, false);
    outline.Build(big.get(), 0, 0, View(-2));
    for (const auto& [x, y] : Pixels(outline)) {
        EXPECT_LE(x, 4);
        EXPECT_LE(y, 4);
    }
}

TEST(SelectionOutline, AnimationDrawsAllThenOnlyTheChangingPixels) {
    auto mask = CreateMask(6, 6, false);
    SelectionOutline outline;
    outline.Build(mask.get(), 0, 0, View(1));
    int total = 0; // corners come once per border through them
    outline.ForEachPixel([&](int, int) { ++total; });
    int white = 0;
    EXPECT_EQ(outline.Draw([&](int x, int y, bool isWhite) {
        EXPECT_EQ(isWhite, ((x + y) & 7) < 4);
        white += isWhite ? 1 : 0;
    }),
              total);
    EXPECT_GT(white, 0);
    EXPECT_FALSE(outline.FullDrawPending());

    outline.Tick();
    EXPECT_EQ(outline.Phase(), 7);
    int changed = 0;
    outline.Draw([&](int x, int y, bool isWhite) {
        const int v = (7 + x + y) & 7;
        EXPECT_TRUE(v == 0 || v == 4);
        EXPECT_EQ(isWhite, v == 0);
        ++changed;
    });
    EXPECT_GT(changed, 0);
    EXPECT_LT(changed, total);
    for (int i = 0; i < 7; ++i) {
        outline.Tick();
    }
    EXPECT_EQ(outline.Phase(), 0);
}
