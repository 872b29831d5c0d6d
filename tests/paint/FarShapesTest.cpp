// Shapes, strokes and gradients whose points lie far outside the picture: the
// pixels inside come out as for a near shape, and the work stays within the
// picture (each of these ran for seconds to minutes when it did not).
#include "image/ImageCoordinates.h"
#include "paint/BrushTestSupport.h"
#include "paint/GradientRamp.h"
#include "paint/RowExtents.h"
#include "paint/ShapeDrawing.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdlib>
#include <random>
#include <vector>

namespace {

constexpr int kFar = kCoordinateLimit;

// The pixels of the line as the step-by-step walk visits them, gathered per
// row of first..last.
std::vector<std::pair<int, int>> WalkedRows(int x0, int y0, int x1, int y1, int first, int last) {
    std::vector<std::pair<int, int>> rows(static_cast<std::size_t>(last - first + 1), {INT_MAX, INT_MIN});
    const int dx = std::abs(x1 - x0);
    const int dy = -std::abs(y1 - y0);
    const int stepX = x0 < x1 ? 1 : -1;
    const int stepY = y0 < y1 ? 1 : -1;
    for (int error = dx + dy;;) {
        if (y0 >= first && y0 <= last) {
            auto& row = rows[static_cast<std::size_t>(y0 - first)];
            row = {std::min(row.first, x0), std::max(row.second, x0)};
        }
        if (x0 == x1 && y0 == y1) {
            return rows;
        }
        const int twice = 2 * error;
        if (twice >= dy) {
            error += dy;
            x0 += stepX;
        }
        if (twice <= dx) {
            error += dx;
            y0 += stepY;
        }
    }
}

std::vector<std::pair<int, int>> ExtentRows(int x0, int y0, int x1, int y1, int first, int last) {
    std::vector<std::pair<int, int>> rows(static_cast<std::size_t>(last - first + 1), {INT_MAX, INT_MIN});
    RowExtents extents(first, last);
    extents.AddLine(x0, y0, x1, y1);
    extents.ForEachSpan([&](int left, int right, int row) { rows[static_cast<std::size_t>(row - first)] = {left, right}; });
    return rows;
}

// Pixels of `big` from column `offset` on, against all of `small`.
bool SameColumns(const CDibImage& big, int offset, const CDibImage& small) {
    for (int y = 0; y < small.Height(); ++y) {
        for (int x = 0; x < small.Width(); ++x) {
            if (big.GetPixel(x + offset, y) != small.GetPixel(x, y)) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

TEST(FarShapes, LineRowsAreThoseOfTheStepwiseWalkAtEverySlopeAndWindow) {
    std::mt19937 random(7);
    for (int trial = 0; trial < 20000; ++trial) {
        const int range = trial % 2 == 0 ? 6 : 120;
        std::uniform_int_distribution<int> coordinate(-range, range);
        const int x0 = coordinate(random), y0 = coordinate(random);
        const int x1 = coordinate(random), y1 = coordinate(random);
        const int first = coordinate(random) / 2;
        const int last = first + std::abs(coordinate(random)) / 3 + 1;
        ASSERT_EQ(ExtentRows(x0, y0, x1, y1, first, last), WalkedRows(x0, y0, x1, y1, first, last))
            << x0 << "," << y0 << " to " << x1 << "," << y1 << ", rows " << first << ".." << last;
    }
}

TEST(FarShapes, StrokesReachingFarOutDrawTheirNearPartUnchanged) {
    // Slopes 1 and 1/2: the far segment's pixels in the picture are the near one's.
    for (const int rise : {kFar, kFar / 2}) {
        BrushCanvas far(30, 20);
        BrushCanvas near(30, 20);
        for (const int shape : {kShapeRect, kShapeOval, kShapeHLine, kShapeSlash}) {
            far.engine.Segment(0, 0, kFar, rise, 3, shape, kModeSolid);
            near.engine.Segment(0, 0, 64, rise == kFar ? 64 : 32, 3, shape, kModeSolid);
        }
        EXPECT_GT(near.PaintedCount(), 30);
        EXPECT_TRUE(SameColumns(*far.image, 0, *near.image)) << rise;
    }
    // From one far side to the other: a band through the picture.
    BrushCanvas across(30, 20);
    across.engine.Segment(-kFar, 10, kFar, 10, 3, kShapeRect, kModeSolid);
    EXPECT_EQ(across.PaintedCount(), 3 * 30);
    across.engine.Segment(5, -kFar, 5, kFar, 1, kShapeRect, kModeSolid);
    EXPECT_EQ(across.PaintedCount(), 3 * 30 + 17);
}

TEST(FarShapes, HugeEllipsesAndRectanglesFillOrMissThePicture) {
    BrushCanvas filled(40, 30);
    DrawEllipseShape(filled.engine, -kFar, -kFar, kFar, kFar, 8, 2);
    EXPECT_EQ(filled.PaintedCount(), 40 * 30);
    // The ring of an ellipse 33 million pixels high passes far from the
    // picture at its centre; the inside filled with the background colour.
    BrushCanvas ring(40, 30);
    ring.engine.SetBackgroundColor(0x00FF00);
    DrawEllipseShape(ring.engine, -kFar, -kFar, kFar, kFar, 8, 1);
    EXPECT_EQ(ring.PaintedCount(), 0);
    EXPECT_EQ(ring.image->GetPixel(20, 15), 0x00FF00u);
    // Its left edge crosses the picture as a band as thick as the pen.
    BrushCanvas edge(40, 30);
    DrawEllipseShape(edge.engine, 10, -kFar, 10 + kFar, kFar, 8, 0);
    for (int y = 0; y < 30; ++y) {
        EXPECT_TRUE(edge.Painted(10, y) && edge.Painted(17, y) && !edge.Painted(9, y) && !edge.Painted(18, y))
            << y;
    }
    BrushCanvas frame(40, 30);
    DrawRectangleShape(frame.engine, -kFar, 5, kFar, kFar, 2, 0);
    EXPECT_EQ(frame.PaintedCount(), 2 * 40);
}

TEST(FarShapes, GradientsFromFarPointsMatchTheNearOnes) {
    const auto render = [](int width, int shape, int sx, int sy, int ex, int ey) {
        auto image = MakeImage(width, 20);
        GradientRamp ramp;
        ramp.SetShape(shape);
        ramp.SetColors(0x0000FF, 0xFF0000);
        EXPECT_EQ(ramp.Render(*image, sx, sy, ex, ey), 1);
        return image;
    };
    // Moved 400 columns: a picture 430 wide holds the near rendering at its
    // right end; the far one only the distances its own pixels have.
    for (const int shape : {GradientRamp::kRadial, GradientRamp::kRectangle}) {
        const auto wide = render(430, shape, 10, 7, 440, 30);
        const auto moved = render(30, shape, -390, 7, 40, 30);
        EXPECT_TRUE(SameColumns(*wide, 400, *moved)) << shape;
    }
    // Every pixel lies past the end (or before the start) of a one-pixel drag
    // far away: all end (start) colour.
    GradientRamp colours;
    colours.SetColors(0x0000FF, 0xFF0000);
    colours.BuildTable();
    const auto beyondEnd = render(30, GradientRamp::kLinear, -kFar, 0, -kFar + 1, 0);
    const auto beforeStart = render(30, GradientRamp::kLinear, kFar, 0, kFar + 1, 3);
    const auto vertical = render(30, GradientRamp::kLinear, 0, -kFar, 0, kFar);
    const auto radial = render(30, GradientRamp::kRadial, -kFar, -kFar, kFar, kFar);
    const double radius = std::llround(std::sqrt(8.0) * kFar);
    for (const auto& [x, y] : {std::pair{0, 0}, {29, 19}, {13, 8}}) {
        EXPECT_EQ(beyondEnd->GetPixel(x, y), colours.Entry(GradientRamp::kLast));
        EXPECT_EQ(beforeStart->GetPixel(x, y), colours.Entry(0));
        EXPECT_EQ(vertical->GetPixel(x, y), colours.Entry(GradientRamp::kLast / 2));
        const double distance = std::round(std::hypot(x + static_cast<double>(kFar), y + static_cast<double>(kFar)));
        const auto index = static_cast<int>(std::floor((2 * distance * GradientRamp::kLast + radius) / (2 * radius)));
        EXPECT_EQ(radial->GetPixel(x, y), colours.Entry(index));
    }
}
