#include "ops/RowResampler.h"
#include "ops/CImageTransform.h"
#include "ops/ImageRescaler.h"
#include "ops/OpsTestImages.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using TransformOp = std::function<int(CImageTransform&)>;

std::unique_ptr<CDibImage> Transformed(const CDibImage& source, const TransformOp& op,
                                       bool swapSides = false) {
    return swapSides ? RunInto<CImageTransform>(source, op, source.Height(), source.Width())
                     : RunInto<CImageTransform>(source, op);
}

const TransformOp kFlipH = [](CImageTransform& t) { return t.FlipHorizontal(); };
const TransformOp kFlipV = [](CImageTransform& t) { return t.FlipVertical(); };
const TransformOp kLeft = [](CImageTransform& t) { return t.RotateLeft(); };
const TransformOp kRight = [](CImageTransform& t) { return t.RotateRight(); };

std::unique_ptr<CDibImage> StripedMask(int width, int height) {
    auto mask = MakeImage(width, height, 1);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            mask->SetBit(x, y, (x * 3 + y * 5) % 7 < 3);
        }
    }
    return mask;
}

TEST(ImageTransform, RotateLeftPutsTheRightColumnOnTop) {
    auto source = GreyImage(3, {1, 2, 3, 4, 5, 6});
    auto turned = Transformed(*source, kLeft, true);
    ASSERT_EQ(turned->Width(), 2);
    ASSERT_EQ(turned->Height(), 3);
    const int expected[3][2] = {{3, 6}, {2, 5}, {1, 4}};
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 2; ++x) {
            EXPECT_EQ(turned->GetPixel(x, y), Grey(expected[y][x]));
        }
    }
}

// Whole 16 x 16 blocks, the rows and columns left over, and odd padding: every
// pixel lands where the turn puts it.
TEST(ImageTransform, QuarterTurnsPlaceEveryPixel) {
    for (const auto& [width, height] : {std::pair{16, 16}, {37, 50}, {50, 37}, {33, 64}, {1, 20}}) {
        auto source = MakeImage(width, height);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                source->SetPixel(x, y, MakeColorWord(x, y, 255 - x));
            }
        }
        auto left = Transformed(*source, kLeft, true);
        auto right = Transformed(*source, kRight, true);
        for (int y = 0; y < width; ++y) {
            for (int x = 0; x < height; ++x) {
                ASSERT_EQ(left->GetPixel(x, y), source->GetPixel(width - 1 - y, x)) << width << "x" << height;
                ASSERT_EQ(right->GetPixel(x, y), source->GetPixel(y, height - 1 - x)) << width << "x" << height;
            }
        }
    }
}

// Sizes past one 64-pixel tile and with odd padding.
TEST(ImageTransform, TurnsAndFlipsUndoThemselves) {
    for (const auto& source : {std::shared_ptr<CDibImage>(MakeGradientImage(70, 37)),
                               std::shared_ptr<CDibImage>(StripedMask(70, 37))}) {
        auto right = Transformed(*source, kRight, true);
        EXPECT_TRUE(SamePixels(*Transformed(*right, kLeft, true), *source));
        auto left = Transformed(*source, kLeft, true);
        EXPECT_TRUE(SamePixels(*Transformed(*left, kRight, true), *source));
        // Two right turns are a half turn: both flips.
        EXPECT_TRUE(SamePixels(*Transformed(*right, kRight, true),
                               *Transformed(*Transformed(*source, kFlipH), kFlipV)));
        EXPECT_TRUE(SamePixels(*Transformed(*Transformed(*source, kFlipH), kFlipH), *source));
        EXPECT_TRUE(SamePixels(*Transformed(*Transformed(*source, kFlipV), kFlipV), *source));
    }
}

TEST(ImageTransform, FlipHorizontalReversesEveryBitOfAMaskRow) {
    auto mask = MakeImage(10, 1, 1);
    for (int x : {0, 1, 7, 8}) {
        mask->SetBit(x, 0, true);
    }
    auto flipped = Transformed(*mask, kFlipH);
    std::vector<int> bits;
    for (int x = 0; x < 10; ++x) {
        bits.push_back(flipped->GetBit(x, 0));
    }
    EXPECT_EQ(bits, (std::vector<int>{0, 1, 1, 0, 0, 0, 0, 0, 1, 1}));
}

TEST(ImageTransform, RotationByNinetyIsExactlyAQuarterTurn) {
    const TransformOp byAngle = [](CImageTransform& t) { return t.RotateByAngle(90.005f, false); };
    for (const auto& source : {std::shared_ptr<CDibImage>(MakeGradientImage(37, 70)),
                               std::shared_ptr<CDibImage>(StripedMask(11, 6))}) {
        EXPECT_TRUE(SamePixels(*Transformed(*source, byAngle, true), *Transformed(*source, kRight, true)));
    }
    auto picture = MakeGradientImage(9, 5);
    const TransformOp half = [](CImageTransform& t) { return t.RotateByAngle(180.0f, false); };
    EXPECT_TRUE(
        SamePixels(*Transformed(*picture, half), *Transformed(*Transformed(*picture, kFlipH), kFlipV)));
}

TEST(ImageTransform, RotatedSizeIsTheBoundingBox) {
    int width = 0;
    int height = 0;
    CImageTransform::RotatedSize(100, 40, 90.0f, width, height);
    EXPECT_EQ(width, 40);
    EXPECT_EQ(height, 100);
    CImageTransform::RotatedSize(100, 100, 45.0f, width, height);
    EXPECT_EQ(width, 142);
    EXPECT_EQ(height, 142);
    CImageTransform::RotatedSize(100, 40, 0.0f, width, height);
    EXPECT_EQ(width, 100);
    EXPECT_EQ(height, 40);
}

TEST(ImageTransform, AngledRotationFillsTheCornersWithTheFillColour) {
    auto source = SolidImage(20, 20, Grey(0));
    auto target = MakeImage(29, 29);
    CImageTransform engine;
    engine.SetFillColor(MakeColorWord(255, 0, 0));
    engine.SetTarget(target.get());
    engine.SetSource(source.get());
    ASSERT_EQ(engine.RotateByAngle(45.0f, true), 1);
    EXPECT_EQ(target->GetPixel(0, 0), MakeColorWord(255, 0, 0));
    EXPECT_EQ(target->GetPixel(14, 14), Grey(0));
    EXPECT_EQ(target->GetPixel(14, 1), Grey(0)); // the top corner of the turned square
}

std::vector<int> Resampled(const std::vector<int>& levels, int targetWidth) {
    std::vector<std::uint8_t> in;
    for (int level : levels) {
        in.insert(in.end(), {static_cast<std::uint8_t>(level), 0, 255});
    }
    std::vector<std::uint8_t> out(3 * targetWidth);
    RowResampler resampler(static_cast<int>(levels.size()), targetWidth);
    EXPECT_TRUE(resampler.IsValid());
    resampler.Resample(in.data(), out.data());
    std::vector<int> result;
    for (int i = 0; i < targetWidth; ++i) {
        EXPECT_EQ(out[3 * i + 2], 255); // a constant channel stays constant
        result.push_back(out[3 * i]);
    }
    return result;
}

TEST(RowResampler, AveragesAreasWhenShrinkingAndInterpolatesWhenGrowing) {
    EXPECT_EQ(Resampled({10, 20, 30}, 3), (std::vector<int>{10, 20, 30}));
    EXPECT_EQ(Resampled({10, 20, 30, 41}, 2), (std::vector<int>{15, 36}));
    EXPECT_EQ(Resampled({0, 90, 180}, 2), (std::vector<int>{30, 150})); // 2/3 and 1/3 of the middle
    EXPECT_EQ(Resampled({0, 100}, 4), (std::vector<int>{0, 25, 75, 100}));
    EXPECT_EQ(Resampled({77}, 5), (std::vector<int>{77, 77, 77, 77, 77}));
    EXPECT_EQ(Resampled({200, 200, 200, 200, 200, 200, 200}, 3), (std::vector<int>{200, 200, 200}));
}

TEST(RowResampler, APictureKeepsAFlatColourWhateverItsNewSize) {
    auto flat = SolidImage(7, 5, MakeColorWord(9, 130, 251));
    for (const auto& [width, height] : {std::pair{3, 11}, std::pair{13, 2}, std::pair{7, 5}}) {
        auto target = MakeImage(width, height);
        ASSERT_EQ(ops::RescalePicture(*flat, *target), 1);
        EXPECT_TRUE(SamePixels(*target, *SolidImage(width, height, MakeColorWord(9, 130, 251))));
    }
}

} // namespace
