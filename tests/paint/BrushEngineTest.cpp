#include "paint/BrushEngine.h"
#include "paint/ArtisticPen.h"
#include "paint/BrushTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

TEST(BrushEngineOval, RowsAreSymmetricAndTouchTheSquareInTheMiddle) {
    BrushEngine engine;
    for (int size = 3; size <= BrushEngine::kMaxPenSize; ++size) {
        engine.BuildOvalTable(size);
        const int r = size / 2;
        for (int i = 0; i < size; ++i) {
            const int mirror = size - 1 - i;
            EXPECT_EQ(engine.OvalLeft(i), engine.OvalLeft(mirror)) << size << " row " << i;
            EXPECT_EQ(engine.OvalRight(i), engine.OvalRight(mirror)) << size << " row " << i;
            // Left to right about the centre column (about -0.5 for even sizes).
            EXPECT_EQ(-engine.OvalLeft(i), engine.OvalRight(i) + (size % 2 == 0 ? 1 : 0)) << size;
            EXPECT_GE(engine.OvalLeft(i), -r);
            EXPECT_LE(engine.OvalLeft(i), engine.OvalRight(i));
        }
        const int middle = (size - 1) / 2;
        EXPECT_EQ(engine.OvalLeft(middle), -r) << size;
        EXPECT_EQ(engine.OvalRight(middle), size - r - 1) << size;
        EXPECT_GT(engine.OvalLeft(0), -r) << "the top row is narrower than the square, size " << size;
    }
}

TEST(BrushEngineDab, ShapesAtSizeOneTwoAndOddEvenSizes) {
    for (int shape = kShapeRect; shape <= kShapeBSlash; ++shape) {
        BrushCanvas one;
        EXPECT_EQ(one.engine.Dab(10, 10, 1, shape, kModeSolid), 1);
        EXPECT_EQ(one.PaintedCount(), 1) << "shape " << shape;
        EXPECT_TRUE(one.Painted(10, 10));
    }
    BrushCanvas oval2;
    oval2.engine.Dab(10, 10, 2, kShapeOval, kModeSolid);
    EXPECT_EQ(oval2.PaintedCount(), 4);
    EXPECT_TRUE(oval2.Painted(9, 9) && oval2.Painted(10, 10));

    const int expected[7][2] = {{0, 0}, {25, 36}, {0, 0}, {5, 6}, {5, 6}, {5, 6}, {5, 6}};
    for (int shape = kShapeRect; shape <= kShapeBSlash; ++shape) {
        if (shape == kShapeOval) {
            continue;
        }
        for (int s = 0; s < 2; ++s) {
            BrushCanvas canvas;
            canvas.engine.Dab(15, 15, 5 + s, shape, kModeSolid);
            EXPECT_EQ(canvas.PaintedCount(), expected[shape][s]) << "shape " << shape << " size " << 5 + s;
        }
    }
    BrushCanvas slash;
    slash.engine.Dab(15, 15, 4, kShapeSlash, kModeSolid); // h = 2: (13,13)..(16,16)
    EXPECT_TRUE(slash.Painted(13, 13) && slash.Painted(16, 16));
    BrushCanvas backslash;
    backslash.engine.Dab(15, 15, 4, kShapeBSlash, kModeSolid);
    EXPECT_TRUE(backslash.Painted(16, 13) && backslash.Painted(13, 16));
}

TEST(BrushEngineDab, SpansAreCutAtBothEdgesAndOutsideDrawsNothing) {
    BrushCanvas canvas(20, 10);
    EXPECT_EQ(canvas.engine.Dab(0, 5, 6, kShapeHLine, kModeSolid), 1); // columns -3..2
    EXPECT_EQ(canvas.PaintedCount(), 3);
    canvas.engine.Dab(19, 5, 6, kShapeHLine, kModeSolid); // 16..21
    EXPECT_EQ(canvas.PaintedCount(), 7);
    EXPECT_EQ(canvas.engine.Dab(-10, 5, 6, kShapeRect, kModeSolid), 1);
    EXPECT_EQ(canvas.engine.Dab(30, 5, 6, kShapeSlash, kModeSolid), 1);
    EXPECT_EQ(canvas.engine.Dab(5, -8, 6, kShapeVLine, kModeSolid), 1);
    EXPECT_EQ(canvas.PaintedCount(), 7);
    canvas.engine.Dab(3, 0, 8, kShapeSlash, kModeSolid); // starts above the image
    EXPECT_TRUE(canvas.Painted(3, 0) && canvas.Painted(6, 3));
}

// The thin line between the two centres: in every row (steep) or column
// (shallow) the pixel nearest to the exact line, ties left out.
static void ExpectThinLineCovered(const BrushCanvas& canvas, int x1, int y1, int x2, int y2,
                                  const char* what) {
    const int dx = x2 - x1;
    const int dy = y2 - y1;
    const bool steep = std::abs(dy) >= std::abs(dx);
    const int steps = steep ? std::abs(dy) : std::abs(dx);
    for (int i = 0; i <= steps; ++i) {
        const double t = steps == 0 ? 0.0 : static_cast<double>(i) / steps;
        const double minor = steep ? x1 + t * dx : y1 + t * dy;
        if (std::abs(minor - std::floor(minor) - 0.5) < 1e-9) {
            continue;
        }
        const int major = steep ? y1 + (dy > 0 ? i : -i) : x1 + (dx > 0 ? i : -i);
        const int nearest = static_cast<int>(std::floor(minor + 0.5));
        const int x = steep ? nearest : major;
        const int y = steep ? major : nearest;
        ASSERT_TRUE(canvas.Painted(x, y)) << what << " gap at " << x << "," << y;
    }
}

TEST(BrushEngineSegment, BandsHaveNoGapsAtAnyAngle) {
    const int sizes[] = {2, 3, 4, 7, 10};
    for (int shape = kShapeRect; shape <= kShapeBSlash; ++shape) {
        for (const int size : sizes) {
            for (int angle = 0; angle < 360; angle += 7) {
                BrushCanvas canvas(80, 80);
                const int x2 = 40 + static_cast<int>(std::lround(30 * std::cos(angle * 3.14159265 / 180)));
                const int y2 = 40 + static_cast<int>(std::lround(30 * std::sin(angle * 3.14159265 / 180)));
                ASSERT_EQ(canvas.engine.Segment(40, 40, x2, y2, size, shape, kModeSolid), 1);
                const std::string what = "shape " + std::to_string(shape) + " size " + std::to_string(size) +
                                         " angle " + std::to_string(angle);
                // An even backslash pen has no cell on its centre: its middle
                // cell is one column left of it.
                const int shift = shape == kShapeBSlash && size % 2 == 0 ? -1 : 0;
                ExpectThinLineCovered(canvas, 40 + shift, 40, x2 + shift, y2, what.c_str());
                EXPECT_TRUE(canvas.Painted(40 + shift, 40) && canvas.Painted(x2 + shift, y2)) << what;
            }
        }
    }
}

TEST(BrushEngineSegment, SizeOneIsAOnePixelLineAndCoincidentPointsOneDab) {
    for (int shape = kShapeRect; shape <= kShapeBSlash; ++shape) {
        BrushCanvas canvas;
        canvas.engine.Segment(3, 4, 30, 15, 1, shape, kModeSolid);
        EXPECT_EQ(canvas.PaintedCount(), 28) << "one pixel per column, shape " << shape;
        EXPECT_TRUE(canvas.Painted(3, 4) && canvas.Painted(30, 15));
    }
    BrushCanvas dab;
    dab.engine.Segment(10, 10, 10, 10, 5, kShapeOval, kModeSolid);
    BrushCanvas single;
    single.engine.Dab(10, 10, 5, kShapeOval, kModeSolid);
    EXPECT_TRUE(SamePixels(*dab.image, *single.image));
}

TEST(BrushEngineModes, EachFormulaOnOnePixel) {
    BrushCanvas canvas(8, 8, MakeColorWord(100, 100, 100));
    auto reference = DuplicateImage(canvas.image.get());
    EXPECT_EQ(canvas.engine.Dab(2, 2, 1, kShapeRect, kModeLighten), 0) << "no reference image";
    EXPECT_EQ(canvas.engine.Segment(2, 2, 5, 5, 2, kShapeRect, kModeDarken), 0);
    EXPECT_TRUE(SamePixels(*canvas.image, *reference));

    canvas.engine.SetReferenceImage(reference.get());
    canvas.engine.Dab(1, 1, 1, kShapeRect, kModeLighten);
    canvas.engine.Dab(1, 1, 1, kShapeRect, kModeLighten); // reads the reference: no further change
    EXPECT_EQ(canvas.image->GetPixel(1, 1), MakeColorWord(110, 110, 110));
    canvas.engine.Dab(2, 1, 1, kShapeRect, kModeDarken);
    EXPECT_EQ(canvas.image->GetPixel(2, 1), MakeColorWord(94, 94, 94));

    canvas.image->SetPixel(3, 3, MakeColorWord(50, 100, 200));
    canvas.image->SetPixel(4, 3, MakeColorWord(50, 100, 200));
    canvas.engine.ComputeForegroundHue(255, 0, 0);
    EXPECT_EQ(canvas.engine.ForegroundHue(), 0);
    canvas.engine.Dab(3, 3, 1, kShapeRect, kModeHue);
    EXPECT_EQ(canvas.image->GetPixel(3, 3), MakeColorWord(200, 50, 50));
    canvas.engine.Dab(4, 3, 1, kShapeRect, kModeHueSaturation);
    EXPECT_EQ(canvas.image->GetPixel(4, 3), MakeColorWord(200, 0, 0));
    canvas.image->SetPixel(5, 3, MakeColorWord(50, 100, 200));
    canvas.engine.ComputeForegroundHue(255, 128, 0); // hue 30, f 0.5: factors 255 - 127
    EXPECT_EQ(canvas.engine.ForegroundHue(), 30);
    canvas.engine.Dab(5, 3, 1, kShapeRect, kModeHueSaturation);
    EXPECT_EQ(canvas.image->GetPixel(5, 3), MakeColorWord(200, 100, 0));
    canvas.engine.ComputeForegroundHue(90, 90, 90);
    EXPECT_EQ(canvas.engine.ForegroundHue(), -1);
    canvas.engine.Dab(5, 3, 1, kShapeRect, kModeHue);
    EXPECT_EQ(canvas.image->GetPixel(5, 3), MakeColorWord(200, 100, 0)) << "a grey ink changes nothing";

    canvas.engine.SetForegroundColor(MakeColorWord(100, 100, 100));
    canvas.engine.SetBackgroundColor(MakeColorWord(1, 2, 3));
    canvas.engine.SetColorMatchBounds(5, 5, 5);
    canvas.image->SetPixel(6, 6, MakeColorWord(106, 100, 100)); // red just outside
    canvas.engine.FillRect(5, 5, 6, 6, kModeColorReplace);
    EXPECT_EQ(canvas.image->GetPixel(5, 5), MakeColorWord(1, 2, 3));
    EXPECT_EQ(canvas.image->GetPixel(6, 6), MakeColorWord(106, 100, 100));

    canvas.engine.SetForegroundColor(MakeColorWord(0, 0, 200));
    canvas.engine.SetSpeckle(64, 0, 1);
    canvas.engine.Dab(6, 0, 1, kShapeRect, kModeSpeckle);
    EXPECT_EQ(canvas.image->GetPixel(6, 0), MakeColorWord(75, 75, 125)); // (192 * 100 + 64 * c) >> 8
}

TEST(BrushEngineModes, ColorReplaceOnAMaskSetsTheBackgroundBit) {
    auto mask = CreateMask(16, 2, true);
    BrushEngine engine;
    engine.SetTargetImage(mask.get());
    engine.SetForegroundColor(0);
    engine.SetBackgroundColor(0xFFFFFF);
    engine.FillSpan(3, 9, 1, kModeColorReplace);
    EXPECT_EQ(mask->GetBit(3, 1) + mask->GetBit(9, 1) + mask->GetBit(10, 1) + mask->GetBit(3, 0), 2);
    engine.SetBackgroundColor(0); // equal colours: nothing happens
    engine.FillSpan(3, 9, 1, kModeColorReplace);
    EXPECT_EQ(mask->GetBit(5, 1), 1);
}

TEST(BrushEngineModes, WashNeverGoesPastOneLayerAndGrainOnlyDarkens) {
    BrushCanvas canvas(60, 60, MakeColorWord(200, 180, 160));
    auto reference = DuplicateImage(canvas.image.get());
    canvas.engine.SetReferenceImage(reference.get());
    canvas.engine.SetForegroundColor(MakeColorWord(20, 40, 60));
    canvas.engine.SetWashOpacity(100);
    canvas.engine.Segment(5, 30, 55, 30, 9, kShapeOval, kModeWash);
    canvas.engine.Segment(30, 5, 30, 55, 9, kShapeOval, kModeWash);
    canvas.engine.Segment(5, 5, 55, 55, 9, kShapeRect, kModeWash);
    const auto layer = [](int r, int c) { return ((256 - 100) * r + 100 * c) >> 8; };
    EXPECT_EQ(canvas.image->GetPixel(30, 30), MakeColorWord(layer(200, 20), layer(180, 40), layer(160, 60)));

    for (const int kind : {8, 9, 10, 11}) {
        BrushCanvas grain(60, 60, MakeColorWord(200, 180, 160));
        auto before = DuplicateImage(grain.image.get());
        grain.engine.SetReferenceImage(before.get());
        grain.engine.SetForegroundColor(MakeColorWord(250, 10, 90));
        std::srand(7);
        EXPECT_EQ(PaintArtisticSegment(grain.engine, kind, 10, 10, 50, 40, 12, kShapeOval), 1);
        EXPECT_EQ(PaintArtisticSegment(grain.engine, kind, 50, 10, 10, 40, 12, kShapeRect), 1);
        int changed = 0;
        for (int y = 0; y < 60; ++y) {
            for (int x = 0; x < 60; ++x) {
                const ColorWord now = grain.image->GetPixel(x, y);
                const ColorWord was = before->GetPixel(x, y);
                EXPECT_LE(RedOf(now), RedOf(was));
                EXPECT_LE(GreenOf(now), GreenOf(was));
                EXPECT_GE(GreenOf(now), (10 * 256 + 0 * 180) >> 8) << "never past full ink";
                changed += now != was ? 1 : 0;
            }
        }
        EXPECT_GT(changed, 0) << "kind " << kind;
    }
}

TEST(BrushEngineArtistic, PenKindsAndTheirResults) {
    BrushCanvas canvas(40, 40, MakeColorWord(120, 120, 120));
    EXPECT_EQ(PaintArtisticSegment(canvas.engine, 2, 5, 5, 30, 30, 6, kShapeOval), 0);
    EXPECT_EQ(PaintArtisticSegment(canvas.engine, 5, 5, 5, 30, 30, 6, kShapeOval), 0);
    auto reference = DuplicateImage(canvas.image.get());
    canvas.engine.SetReferenceImage(reference.get());
    canvas.engine.SetForegroundColor(0x000000);
    EXPECT_EQ(PaintArtisticSegment(canvas.engine, 7, 5, 20, 35, 20, 9, kShapeOval), 1);
    EXPECT_EQ(canvas.image->GetPixel(20, 20), 0x000000u) << "the wash pen ends with a solid core";
    std::srand(1);
    EXPECT_EQ(PaintArtisticSegment(canvas.engine, 12, 5, 5, 35, 5, 6, kShapeRect), 1);
    EXPECT_EQ(canvas.engine.SpeckleDensity(), 2);
    EXPECT_EQ(PaintArtisticSegment(canvas.engine, 3, 5, 35, 35, 35, 3, kShapeRect), 1);
    EXPECT_EQ(canvas.image->GetPixel(20, 35), MakeColorWord(112, 112, 112)); // 120 - (1920 + 128) / 256
}

TEST(BrushEngineModes, SolidSpansOnMasksSetAndClearExactlyTheirBits) {
    auto mask = CreateMask(40, 1, true);
    BrushEngine engine;
    engine.SetTargetImage(mask.get());
    engine.SetForegroundColor(0xFFFFFF);
    engine.FillSpan(3, 29, 0, kModeSolid);
    engine.SetForegroundColor(0);
    engine.FillSpan(5, 5, 0, kModeSolid);
    for (int x = 0; x < 40; ++x) {
        EXPECT_EQ(mask->GetBit(x, 0), x >= 3 && x <= 29 && x != 5 ? 1 : 0) << x;
    }
}
