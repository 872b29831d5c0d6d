#include "paint/CloneStamp.h"
#include "BrushTestSupport.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Point {
    int x;
    int y;
};

std::unique_ptr<CDibImage> MakeTexture(int width, int height) {
    return MakeNoiseImage(width, height, 777u);
}

// The cells a pen stroke through the points covers: a dab, then segments.
std::unique_ptr<BrushCanvas> PenCoverage(int width, int height, const std::vector<Point>& points, int size,
                                         int shape) {
    auto canvas = std::make_unique<BrushCanvas>(width, height);
    BrushEngine& engine = canvas->engine;
    engine.BuildOvalTable(size);
    engine.Dab(points[0].x, points[0].y, size, shape, kModeSolid);
    for (std::size_t i = 1; i < points.size(); ++i) {
        engine.Segment(points[i - 1].x, points[i - 1].y, points[i].x, points[i].y, size, shape, kModeSolid);
    }
    return canvas;
}

struct CloneCase {
    const char* what;
    Point source;
    std::vector<Point> stroke;
    int size;
    int shape;
};

} // namespace

TEST(CloneStampTest, StrokeCopiesThePictureAsItWasFromTheOffsetThroughThePen) {
    const CloneCase cases[] = {
        {"far copy, oval pen", {4, 3}, {{24, 12}, {34, 18}, {30, 26}}, 5, kShapeOval},
        {"source overlapping the stroke", {10, 10}, {{13, 10}, {34, 12}}, 4, kShapeRect},
        {"source partly left of and above the picture", {-3, -2}, {{2, 3}, {8, 20}}, 6, kShapeRect},
        {"slanted pen, source below the picture", {20, 25}, {{20, 20}, {5, 22}}, 7, kShapeSlash},
    };
    for (const CloneCase& c : cases) {
        SCOPED_TRACE(c.what);
        auto picture = MakeTexture(40, 30);
        const auto before = DuplicateImage(picture.get());
        BrushEngine engine;
        engine.SetTargetImage(picture.get());
        engine.BuildOvalTable(c.size);
        CloneStamp stamp;
        stamp.SetSource(c.source.x, c.source.y);
        ASSERT_TRUE(stamp.FixOffset(c.stroke[0].x, c.stroke[0].y, true));
        ASSERT_EQ(stamp.BeginStroke(engine, *picture), 1);
        stamp.Dab(engine, c.stroke[0].x, c.stroke[0].y, c.size, c.shape);
        for (std::size_t i = 1; i < c.stroke.size(); ++i) {
            stamp.Segment(engine, c.stroke[i - 1].x, c.stroke[i - 1].y, c.stroke[i].x, c.stroke[i].y, c.size,
                          c.shape);
        }
        stamp.EndStroke(engine);

        const auto pen = PenCoverage(40, 30, c.stroke, c.size, c.shape);
        const int dx = c.stroke[0].x - c.source.x;
        const int dy = c.stroke[0].y - c.source.y;
        int copied = 0;
        for (int y = 0; y < 30; ++y) {
            for (int x = 0; x < 40; ++x) {
                const int sx = x - dx;
                const int sy = y - dy;
                const bool fromInside = sx >= 0 && sx < 40 && sy >= 0 && sy < 30;
                const ColorWord expected =
                    pen->Painted(x, y) && fromInside ? before->GetPixel(sx, sy) : before->GetPixel(x, y);
                ASSERT_EQ(picture->GetPixel(x, y), expected) << x << "," << y;
                copied += pen->Painted(x, y) && fromInside ? 1 : 0;
            }
        }
        EXPECT_GT(copied, 10);
    }
}
