#include "ops/CImageFilter.h"
#include "ops/OpsTestImages.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

using FilterOp = std::function<int(CImageFilter&)>;

std::unique_ptr<CDibImage> Filtered(const CDibImage& source, const FilterOp& op) {
    return RunInto<CImageFilter>(source, op);
}

ColorWord FilteredPixel(ColorWord color, const FilterOp& op) {
    auto source = SolidImage(1, 1, color);
    return Filtered(*source, op)->GetPixel(0, 0);
}

TEST(ImageFilter, PointOperationsFollowTheirFormulas) {
    auto gradient = MakeGradientImage(13, 7);
    auto once = Filtered(*gradient, [](CImageFilter& f) { return f.Invert(); });
    EXPECT_EQ(once->GetPixel(3, 2), MakeColorWord(255 - (3 * 7 + 1), 255 - (2 * 11 + 2), 255 - (5 * 3 + 3)));
    auto twice = Filtered(*once, [](CImageFilter& f) { return f.Invert(); });
    EXPECT_TRUE(SamePixels(*twice, *gradient));

    EXPECT_EQ(FilteredPixel(MakeColorWord(255, 0, 0), [](CImageFilter& f) { return f.Gray(); }), Grey(77));

    const auto levelRed = [](CImageFilter& f) { return f.ColorLevel(28, 0, 0); };
    EXPECT_EQ(FilteredPixel(Grey(255), levelRed), Grey(255));
    EXPECT_EQ(FilteredPixel(Grey(0), levelRed), Grey(0));
    EXPECT_EQ(FilteredPixel(Grey(128), levelRed), MakeColorWord(255, 0, 0));
    const ColorWord foreground = MakeColorWord(10, 20, 30);
    EXPECT_EQ(FilteredPixel(Grey(127), [&](CImageFilter& f) { return f.ColorLevel(34, foreground, 0); }),
              foreground);

    const ColorWord sample = MakeColorWord(200, 100, 50);
    EXPECT_EQ(FilteredPixel(sample, [](CImageFilter& f) { return f.ColorTone(25); }),
              MakeColorWord(255, 50, 25));
    EXPECT_EQ(FilteredPixel(sample, [](CImageFilter& f) { return f.ColorTone(22); }),
              MakeColorWord(100, 150, 25));
}

TEST(ImageFilter, OnePixelIsItsOwnNeighbourhood) {
    const ColorWord color = MakeColorWord(90, 140, 250);
    for (int strength = 1; strength <= 6; ++strength) {
        EXPECT_EQ(FilteredPixel(color, [=](CImageFilter& f) { return f.Convolve3x3(strength); }), color)
            << strength;
    }
    EXPECT_EQ(FilteredPixel(color, [](CImageFilter& f) { return f.Despeckle(64); }), color);
    EXPECT_EQ(FilteredPixel(color, [](CImageFilter& f) { return f.Diffuse(); }), color);
    EXPECT_EQ(FilteredPixel(color, [](CImageFilter& f) { return f.FindEdge(1, 1, 0, 0); }), color);
    EXPECT_EQ(FilteredPixel(color, [](CImageFilter& f) { return f.Emboss(0, 2, Grey(128)); }), Grey(128));
}

TEST(ImageFilter, BlurAndSharpenOfOneBrightPixel) {
    auto dot = GreyImage(3, {0, 0, 0, 0, 90, 0, 0, 0, 0});
    auto small = Filtered(*dot, [](CImageFilter& f) { return f.Convolve3x3(1); });
    EXPECT_EQ(small->GetPixel(1, 1), Grey(45));
    EXPECT_EQ(small->GetPixel(0, 0), Grey(5));
    auto large = Filtered(*dot, [](CImageFilter& f) { return f.Convolve3x3(3); });
    EXPECT_EQ(large->GetPixel(1, 1), Grey(10));
    auto sharpenSmall = Filtered(*dot, [](CImageFilter& f) { return f.Convolve3x3(4); });
    EXPECT_EQ(sharpenSmall->GetPixel(1, 1), Grey(135));
    EXPECT_EQ(sharpenSmall->GetPixel(2, 0), Grey(0));
    auto sharpenLarge = Filtered(*dot, [](CImageFilter& f) { return f.Convolve3x3(6); });
    EXPECT_EQ(sharpenLarge->GetPixel(1, 1), Grey(255));
}

// A tall picture whose rows are all alike must give, in every row, what the
// one-row picture gives: the rows are split between threads, and a wrong row
// address at a band's edge would show.
TEST(ImageFilter, RowBandsGiveTheSameRowsAsOneRow) {
    auto row = MakeGradientImage(37, 1);
    auto tall = MakeImage(37, 301);
    for (int y = 0; y < 301; ++y) {
        for (int x = 0; x < 37; ++x) {
            tall->SetPixel(x, y, row->GetPixel(x, 0));
        }
    }
    const FilterOp ops[] = {
        [](CImageFilter& f) { return f.Convolve3x3(2); },
        [](CImageFilter& f) { return f.Convolve3x3(5); },
        [](CImageFilter& f) { return f.Despeckle(8); },
        [](CImageFilter& f) { return f.Emboss(3, 3, 0x808080); },
        [](CImageFilter& f) { return f.FindEdge(0, 0, 30, 0); },
        [](CImageFilter& f) { return f.TraceContour(0, 1, 0, 40, 0, 0); },
        [](CImageFilter& f) { return f.Gray(); },
    };
    for (const auto& op : ops) {
        auto one = Filtered(*row, op);
        auto many = Filtered(*tall, op);
        for (int y : {0, 1, 150, 151, 299, 300}) {
            for (int x = 0; x < 37; ++x) {
                ASSERT_EQ(many->GetPixel(x, y), one->GetPixel(x, 0)) << x << "," << y;
            }
        }
    }
}

// Stored rows run bottom-up, so the "next" row is the one above on screen.
TEST(ImageFilter, EmbossAndFindEdgeSeeTheRowAboveAsNext) {
    auto column = GreyImage(1, {255, 0, 0});
    auto embossed = Filtered(*column, [](CImageFilter& f) { return f.Emboss(1, 1, Grey(128)); });
    EXPECT_EQ(embossed->GetPixel(0, 1), Grey(255)); // next (above) minus previous (below)

    // All eight directions at the centre of a grey ramp: A - B per the button.
    auto ramp = GreyImage(3, {10, 20, 30, 40, 50, 60, 70, 80, 90});
    const int differences[8] = {-40, -60, -80, 20, 40, 60, 80, -20};
    for (int direction = 0; direction < 8; ++direction) {
        auto result = Filtered(*ramp, [=](CImageFilter& f) { return f.Emboss(direction, 1, Grey(128)); });
        EXPECT_EQ(result->GetPixel(1, 1), Grey(128 + differences[direction])) << direction;
    }

    const auto defaultLine = [](CImageFilter& f) { return f.FindEdge(1, 0, 0, 0); };
    auto aboveLeft = GreyImage(3, {90, 0, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(Filtered(*aboveLeft, defaultLine)->GetPixel(1, 1), Grey(255 - 180));
    // Darken Color on the background: k = (540 + 1) / 3 = 180, e = (200 x 75 + 127) shr 8 = 59.
    EXPECT_EQ(
        Filtered(*aboveLeft, [](CImageFilter& f) { return f.FindEdge(0, 1, 0, Grey(200)); })->GetPixel(1, 1),
        Grey(59));
    EXPECT_EQ(
        Filtered(*aboveLeft, [](CImageFilter& f) { return f.FindEdge(0, 1, 20, Grey(200)); })->GetPixel(1, 1),
        Grey(47));
    auto belowLeft = GreyImage(3, {0, 0, 0, 0, 0, 0, 90, 0, 0});
    EXPECT_EQ(Filtered(*belowLeft, defaultLine)->GetPixel(1, 1), Grey(255 - 90));
}

TEST(ImageFilter, FindEdgeBackgroundBlendUsesTheBlueComponent) {
    const ColorWord red = MakeColorWord(255, 0, 0);
    auto flat = SolidImage(4, 3, Grey(100));
    auto blended = Filtered(*flat, [&](CImageFilter& f) { return f.FindEdge(0, 1, 50, red); });
    EXPECT_EQ(blended->GetPixel(2, 1), Grey(50));
    auto plain = Filtered(*flat, [&](CImageFilter& f) { return f.FindEdge(0, 1, 0, red); });
    EXPECT_EQ(plain->GetPixel(2, 1), red);
}

TEST(ImageFilter, TraceContourRules) {
    const ColorWord back = MakeColorWord(1, 2, 3);
    const ColorWord fore = MakeColorWord(200, 150, 100);
    auto ridge = GreyImage(3, {0, 200, 0});
    auto lightest = Filtered(*ridge, [&](CImageFilter& f) { return f.TraceContour(0, 0, 1, 0, back, fore); });
    EXPECT_EQ(lightest->GetPixel(0, 0), fore);
    EXPECT_EQ(lightest->GetPixel(1, 0), back);
    auto darkest = Filtered(*ridge, [&](CImageFilter& f) { return f.TraceContour(1, 0, 1, 0, back, fore); });
    EXPECT_EQ(darkest->GetPixel(0, 0), back);
    EXPECT_EQ(darkest->GetPixel(1, 0), fore);
    auto darkestSeeThrough =
        Filtered(*ridge, [&](CImageFilter& f) { return f.TraceContour(1, 0, 1, 70, back, fore); });
    EXPECT_TRUE(SamePixels(*darkest, *darkestSeeThrough));

    // "Default" colours an edge 255 - d per channel: only the channels that
    // differ go dark; with transparency the source shows through.
    auto pair = SolidImage(2, 1, Grey(0));
    pair->SetPixel(1, 0, MakeColorWord(200, 50, 200));
    EXPECT_EQ(Filtered(*pair, [&](CImageFilter& f) { return f.TraceContour(0, 0, 0, 0, back, fore); })
                  ->GetPixel(0, 0),
              MakeColorWord(0, 255, 0));
    auto seeThrough =
        Filtered(*pair, [&](CImageFilter& f) { return f.TraceContour(0, 0, 0, 40, back, fore); });
    EXPECT_EQ(seeThrough->GetPixel(0, 0), MakeColorWord(0, 153, 0));
    EXPECT_EQ(seeThrough->GetPixel(1, 0),
              MakeColorWord((200 * 40 + 1 * 60 + 50) / 100, (50 * 40 + 2 * 60 + 50) / 100,
                            (200 * 40 + 3 * 60 + 50) / 100));

    // The next row's right pixel (above right on screen) is never examined.
    auto aboveRight = GreyImage(3, {0, 0, 200, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(Filtered(*aboveRight, [&](CImageFilter& f) { return f.TraceContour(0, 0, 1, 0, back, fore); })
                  ->GetPixel(1, 1),
              back);
    auto belowRight = GreyImage(3, {0, 0, 0, 0, 0, 0, 0, 0, 200});
    EXPECT_EQ(Filtered(*belowRight, [&](CImageFilter& f) { return f.TraceContour(0, 0, 1, 0, back, fore); })
                  ->GetPixel(1, 1),
              fore);
}

TEST(ImageFilter, MosaicCellSumsWrapAtSixteenBits) {
    auto white = SolidImage(20, 13, Grey(255));
    const auto mosaic = [&](int n) { return Filtered(*white, [=](CImageFilter& f) { return f.Mosaic(n); }); };
    auto twelve = mosaic(12);
    EXPECT_EQ(twelve->GetPixel(0, 0), Grey(56));
    EXPECT_EQ(twelve->GetPixel(19, 12), Grey(56));
    EXPECT_EQ(mosaic(11)->GetPixel(5, 5), Grey(255));
    EXPECT_EQ(mosaic(16)->GetPixel(19, 12), Grey(255));

    auto steps = GreyImage(3, {0, 40, 80, 0, 40, 80, 0, 40, 80});
    auto cells = Filtered(*steps, [](CImageFilter& f) { return f.Mosaic(2); });
    EXPECT_EQ(cells->GetPixel(1, 0), Grey(20));
    EXPECT_EQ(cells->GetPixel(2, 2), Grey(80)); // last column and row repeated
}

TEST(ImageFilter, AverageAnchorsItsBlockTopLeftAndRepeatsTheEdges) {
    auto dots = SolidImage(6, 6, Grey(0));
    dots->SetPixel(2, 2, Grey(160));
    dots->SetPixel(5, 5, Grey(160));
    auto averaged = Filtered(*dots, [](CImageFilter& f) { return f.Average(4); });
    EXPECT_EQ(averaged->GetPixel(0, 0), Grey(10));
    EXPECT_EQ(averaged->GetPixel(2, 2), Grey(20)); // both dots fall in its block
    EXPECT_EQ(averaged->GetPixel(3, 3), Grey(40)); // (5, 5) counted 2 x 2 times
    EXPECT_EQ(averaged->GetPixel(5, 5), Grey(160));
    EXPECT_EQ(averaged->GetPixel(4, 4), Grey(90));
}

TEST(ImageFilter, DespeckleReplacesOnlyStrongOutliers) {
    auto speck = GreyImage(3, {0, 0, 0, 0, 255, 0, 0, 0, 0});
    auto cleaned = Filtered(*speck, [](CImageFilter& f) { return f.Despeckle(64); });
    EXPECT_EQ(cleaned->GetPixel(1, 1), Grey(63));
    EXPECT_EQ(cleaned->GetPixel(0, 0), Grey(0));
}

TEST(ImageFilter, DiffuseTakesANeighbourAndRepeatsWithTheSameSeed) {
    auto gradient = MakeGradientImage(40, 150);
    std::srand(7);
    auto first = Filtered(*gradient, [](CImageFilter& f) { return f.Diffuse(); });
    std::srand(7);
    auto second = Filtered(*gradient, [](CImageFilter& f) { return f.Diffuse(); });
    EXPECT_TRUE(SamePixels(*first, *second));
    for (int y = 0; y < 150; ++y) {
        for (int x = 0; x < 40; ++x) {
            bool found = false;
            for (int dy = -1; dy <= 1 && !found; ++dy) {
                for (int dx = -1; dx <= 1 && !found; ++dx) {
                    const int sx = std::clamp(x + dx, 0, 39);
                    const int sy = std::clamp(y + dy, 0, 149);
                    found = gradient->GetPixel(sx, sy) == first->GetPixel(x, y);
                }
            }
            ASSERT_TRUE(found) << x << "," << y;
        }
    }
}

} // namespace
