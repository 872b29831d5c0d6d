#include "BrushTestSupport.h"
#include "image/CDibImage.h"
#include "paint/BrushEngine.h"
#include "paint/DabCells.h"
#include "paint/FilterBrush.h"
#include "paint/SmudgeBrush.h"
#include "paint/TouchUpDabs.h"
#include "support/ImageFixtures.h"

#include <gtest/gtest.h>

#include <QPoint>
#include <array>
#include <cstdlib>

namespace {

ColorWord Grey(int level) {
    return MakeColorWord(level, level, level);
}

int Level(const CDibImage& image, int x, int y) {
    return static_cast<int>(image.GetPixel(x, y) & 0xFF);
}

// A grey picture of level 100 with two bright spikes of 228.
std::unique_ptr<CDibImage> TwoSpikes() {
    auto image = MakeImage(9, 9);
    image->Clear(Grey(100));
    image->SetPixel(3, 3, Grey(228));
    image->SetPixel(5, 5, Grey(228));
    return image;
}

} // namespace

TEST(DabCells, CoverExactlyThePixelsOfAnEngineDab) {
    for (int shape = kShapeRect; shape <= kShapeBSlash; ++shape) {
        for (int size : {1, 2, 5, 8, 32}) {
            DabCells cells;
            ASSERT_EQ(cells.Build(size, shape), 1);
            BrushCanvas canvas(48, 48);
            canvas.engine.Dab(20, 21, size, shape, kModeSolid);
            auto marked = MakeImage(48, 48);
            marked->Clear(0xFFFFFF);
            for (int i = 0; i < cells.RunCount(); ++i) {
                const DabCells::Run& run = cells.RunAt(i);
                for (int dx = run.left; dx <= run.right; ++dx) {
                    marked->SetPixel(20 + dx, 21 + run.dy, 0);
                }
            }
            EXPECT_TRUE(SamePixels(*marked, *canvas.image)) << "shape " << shape << " size " << size;
            EXPECT_EQ(cells.CellCount(), canvas.PaintedCount());
        }
    }
}

TEST(WalkSegment, StepsNoFartherThanAskedAndEndsOnTheEndPoint) {
    for (const auto& e : {std::array{0, 0, 17, 5}, std::array{3, 9, -8, -2}, std::array{5, 5, 5, 5}}) {
        QPoint last(e[0], e[1]);
        WalkSegment(e[0], e[1], e[2], e[3], 3, [&](int x, int y) {
            EXPECT_LE(std::max(std::abs(x - last.x()), std::abs(y - last.y())), 3);
            last = QPoint(x, y);
        });
        EXPECT_EQ(last, QPoint(e[2], e[3]));
    }
}

TEST(FilterBrush, BlurUnderTheDabIsBlurSmallOfThePictureAtPenDown) {
    auto picture = TwoSpikes();
    FilterBrush brush;
    ASSERT_EQ(brush.Begin(*picture, FilterBrush::kBlurSmall), 1);
    brush.Dab(*picture, 3, 3, 3, kShapeRect); // cells 2..4 x 2..4
    EXPECT_EQ(Level(*picture, 3, 3), (8 * 228 + 8 * 100) >> 4);
    EXPECT_EQ(Level(*picture, 2, 3), (8 * 100 + 7 * 100 + 228) >> 4);
    EXPECT_EQ(Level(*picture, 4, 4), (8 * 100 + 6 * 100 + 2 * 228) >> 4) << "both spikes are neighbours";
    EXPECT_EQ(Level(*picture, 5, 5), 228) << "outside the dab";
    EXPECT_EQ(Level(*picture, 5, 4), 100);

    // Going back and forth over the same place does not blur further.
    auto once = DuplicateImage(picture.get());
    brush.Segment(*picture, 3, 3, 4, 3, 3, kShapeRect);
    brush.Segment(*picture, 4, 3, 3, 3, 3, kShapeRect);
    brush.Segment(*picture, 3, 3, 3, 3, 3, kShapeRect);
    EXPECT_EQ(Level(*picture, 3, 3), Level(*once, 3, 3));
    EXPECT_EQ(Level(*picture, 4, 4), Level(*once, 4, 4));
    EXPECT_EQ(Level(*picture, 5, 4), (8 * 100 + 7 * 100 + 228) >> 4) << "newly covered by the wider path";
    EXPECT_EQ(Level(*picture, 6, 5), 100) << "outside the path";
}

TEST(FilterBrush, SharpenUsesTheSharpenSmallRuleWithClamping) {
    auto picture = TwoSpikes();
    FilterBrush brush;
    ASSERT_EQ(brush.Begin(*picture, FilterBrush::kSharpenSmall), 1);
    brush.Segment(*picture, 1, 3, 3, 3, 1, kShapeRect);
    EXPECT_EQ(Level(*picture, 3, 3), 255) << "228 + (228 - 100) / 2 is clamped";
    EXPECT_EQ(Level(*picture, 2, 3), 100 + ((100 - ((7 * 100 + 228) >> 3)) >> 1));
    EXPECT_EQ(Level(*picture, 1, 3), 100);
    EXPECT_EQ(Level(*picture, 2, 2), 100) << "beside the path";
}

TEST(SmudgeBrush, DragsColourAlongTheStrokeAndFadesIt) {
    auto picture = MakeImage(10, 3);
    picture->Clear(Grey(255));
    for (int x = 0; x < 3; ++x) {
        picture->SetPixel(x, 1, Grey(0));
    }
    SmudgeBrush brush;
    ASSERT_EQ(brush.Begin(), 1);
    brush.Segment(*picture, 2, 1, 5, 1, 1, kShapeRect);
    const auto blend = [](int dragged, int under) { return (192 * dragged + 64 * under + 128) >> 8; };
    const int at3 = blend(0, 255);
    const int at4 = blend(at3, 255);
    EXPECT_EQ(Level(*picture, 3, 1), at3);
    EXPECT_EQ(Level(*picture, 4, 1), at4);
    EXPECT_EQ(Level(*picture, 5, 1), blend(at4, 255));
    EXPECT_EQ(Level(*picture, 2, 1), 0) << "the start is not smudged";
    EXPECT_EQ(Level(*picture, 6, 1), 255) << "past the end";
    EXPECT_EQ(Level(*picture, 4, 0), 255) << "beside the path";

    // Dabs whose source lies outside the picture leave their place alone.
    brush.Segment(*picture, -3, 1, 0, 1, 1, kShapeRect);
    EXPECT_EQ(Level(*picture, 0, 1), 0) << "dragged from column -1";
}
