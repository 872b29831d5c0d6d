#include "paint/ShapeDrawing.h"
#include "paint/BrushTestSupport.h"
#include "paint/PenStroke.h"

#include <gtest/gtest.h>

TEST(ShapeDrawing, RectangleStyles) {
    BrushCanvas outline(20, 20);
    outline.engine.SetBackgroundColor(0x00FF00);
    DrawRectangleShape(outline.engine, 12, 10, 2, 2, 2, 0);
    EXPECT_EQ(outline.PaintedCount(), 11 * 9 - 7 * 5);
    EXPECT_TRUE(outline.Painted(3, 3));
    EXPECT_FALSE(outline.Painted(4, 4));

    BrushCanvas filledInside(20, 20);
    filledInside.engine.SetBackgroundColor(0x00FF00);
    DrawRectangleShape(filledInside.engine, 2, 2, 12, 10, 2, 1);
    EXPECT_EQ(filledInside.image->GetPixel(4, 4), 0x00FF00u);
    EXPECT_EQ(filledInside.engine.Foreground(), 0x000000u) << "the colours are restored";

    BrushCanvas thick(20, 20);
    DrawRectangleShape(thick.engine, 2, 2, 12, 6, 3, 0); // 2t >= height: filled
    EXPECT_EQ(thick.PaintedCount(), 11 * 5);
    BrushCanvas clipped(20, 20);
    DrawRectangleShape(clipped.engine, -5, -5, 30, 30, 1, 2);
    EXPECT_EQ(clipped.PaintedCount(), 400);
}

TEST(ShapeDrawing, EllipsesAreSymmetricAndTouchTheirBox) {
    for (int w = 1; w <= 12; ++w) {
        for (int h = 1; h <= 9; ++h) {
            for (int row = 0; row < h; ++row) {
                int first = 0, last = 0, mirrorFirst = 0, mirrorLast = 0;
                ASSERT_TRUE(EllipseRowExtent(w, h, row, first, last));
                ASSERT_TRUE(EllipseRowExtent(w, h, h - 1 - row, mirrorFirst, mirrorLast));
                EXPECT_EQ(first, w - 1 - last);
                EXPECT_EQ(first, mirrorFirst);
                EXPECT_LE(first, last);
            }
            int first = 0, last = 0;
            EllipseRowExtent(w, h, h / 2, first, last);
            EXPECT_EQ(first, 0) << w << "x" << h << ": the middle rows reach both sides";
        }
    }
    BrushCanvas ring(30, 30);
    ring.engine.SetBackgroundColor(0x00FF00);
    DrawEllipseShape(ring.engine, 2, 2, 22, 16, 3, 1);
    EXPECT_TRUE(ring.Painted(2, 9) && ring.Painted(22, 9) && ring.Painted(12, 2) && ring.Painted(12, 16));
    EXPECT_EQ(ring.image->GetPixel(12, 9), 0x00FF00u);
    EXPECT_EQ(ring.image->GetPixel(1, 9), 0xFFFFFFu);
}

TEST(ShapeDrawing, SquareConstraintAndLineSnap) {
    int x = 10, y = -3;
    ConstrainToSquare(0, 0, x, y);
    EXPECT_EQ(x, 3);
    EXPECT_EQ(y, -3);
    x = -8, y = 0;
    ConstrainToSquare(0, 0, x, y);
    EXPECT_EQ(x, 0) << "n = 0";
    const int cases[][4] = {
        {10, 5, 10, 10}, {10, 20, 10, 10}, {10, 4, 10, 0}, {-10, 5, -10, 10}, {1, 30, 0, 30}};
    for (const auto& c : cases) {
        x = c[0], y = c[1];
        SnapLineEnd(0, 0, x, y);
        EXPECT_EQ(x, c[2]) << c[0] << "," << c[1];
        EXPECT_EQ(y, c[3]) << c[0] << "," << c[1];
    }
}

TEST(PenStroke, PressureSimulationThinsFastStrokes) {
    EXPECT_EQ(StartPressure(1, true).simulatedSize, -1) << "a pen of size 1 keeps size 1";
    EXPECT_EQ(StartPressure(8, false).simulatedSize, -1);

    BrushCanvas canvas(200, 40);
    PressureState pressure = StartPressure(3, true);
    EXPECT_EQ(pressure.minimumSize, 0);
    PenMove(canvas.engine, pressure, 5, 20, 195, 20, 3, kShapeRect);
    EXPECT_EQ(pressure.simulatedSize, 0) << "three steps of 10 pixels end the width";
    EXPECT_TRUE(canvas.Painted(10, 21));
    EXPECT_FALSE(canvas.Painted(60, 20)) << "nothing drawn once the width is 0";
    PenMove(canvas.engine, pressure, 195, 20, 195, 22, 3, kShapeRect);
    EXPECT_EQ(pressure.simulatedSize, 1) << "a slow sample regains a pixel";

    BrushCanvas wide(200, 40);
    PressureState eight = StartPressure(8, true);
    PenMove(wide.engine, eight, 5, 20, 100, 20, 8, kShapeRect);
    EXPECT_EQ(eight.simulatedSize, 2) << "down to a quarter of the pen";
    EXPECT_TRUE(wide.Painted(99, 20));

    BrushCanvas stroke(60, 60);
    const int points[][2] = {{5, 5}, {30, 30}, {50, 10}};
    PenStroke(stroke.engine, points, 3, 4, kShapeOval, false);
    EXPECT_TRUE(stroke.Painted(5, 5) && stroke.Painted(30, 30) && stroke.Painted(50, 10) &&
                stroke.Painted(40, 20));
}
