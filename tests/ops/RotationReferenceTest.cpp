// Rotation by an angle against a plain per-pixel version of its sampler: every
// target pixel runs the sums, the coverage test and the bilinear blend on its
// own. Noisy pictures of many shapes (widths that are and are not multiples of
// four, so rows with and without padding end the picture) and angles near the
// axes, where the covered spans start and end at single pixels.
#include "ops/CImageTransform.h"
#include "ops/OpsTestImages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

int RoundAway(double v) {
    return static_cast<int>(v < 0.0 ? v - 0.5 : v + 0.5);
}

std::unique_ptr<CDibImage> NoisyPicture(int width, int height, unsigned seed) {
    auto image = MakeImage(width, height);
    std::mt19937 random(seed);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image->SetPixel(x, y, random() & 0xFFFFFF);
        }
    }
    return image;
}

// The sampler written pixel by pixel, rows from the top.
std::vector<std::uint8_t> ReferenceRotation(const CDibImage& source, int width, int height, float angle,
                                            ColorWord fill) {
    double sine = 0.0;
    double cosine = 1.0;
    CImageTransform::RotationSineCosine(angle, sine, cosine);
    const int sourceWidth = source.Width();
    const int sourceHeight = source.Height();
    const double cx = (sourceWidth - 1) * 0.5;
    const double cy = (sourceHeight - 1) * 0.5;
    const double dx = (width - 1) * 0.5;
    const double dy = (height - 1) * 0.5;
    // Channel 0 blue, 1 green, 2 red of a colour word (red in its low byte).
    const auto channel = [&](int x, int y, int ch) {
        return static_cast<int>((source.GetPixel(x, y) >> (16 - 8 * ch)) & 0xFF);
    };
    const std::uint8_t fillBytes[3] = {static_cast<std::uint8_t>(BlueOf(fill)),
                                       static_cast<std::uint8_t>(GreenOf(fill)),
                                       static_cast<std::uint8_t>(RedOf(fill))};
    std::vector<std::uint8_t> out;
    double rowSin = -dy * sine;
    double rowCos = -dy * cosine;
    for (int y = 0; y < height; ++y, rowSin += sine, rowCos += cosine) {
        double columnSin = -dx * sine;
        double columnCos = -dx * cosine;
        for (int x = 0; x < width; ++x, columnSin += sine, columnCos += cosine) {
            const double sx = cx + columnCos + rowSin;
            const double sy = cy - columnSin + rowCos;
            const int nx = RoundAway(sx);
            const int ny = RoundAway(sy);
            if (nx < 0 || nx >= sourceWidth || ny < 0 || ny >= sourceHeight) {
                out.insert(out.end(), fillBytes, fillBytes + 3);
                continue;
            }
            const double fx = std::clamp(sx, 0.0, sourceWidth - 1.0);
            const double fy = std::clamp(sy, 0.0, sourceHeight - 1.0);
            const int x0 = static_cast<int>(fx);
            const int y0 = static_cast<int>(fy);
            const int x1 = std::min(x0 + 1, sourceWidth - 1);
            const int y1 = std::min(y0 + 1, sourceHeight - 1);
            const int wx = static_cast<int>((fx - x0) * 256.0 + 0.5);
            const int wy = static_cast<int>((fy - y0) * 256.0 + 0.5);
            for (int ch = 0; ch < 3; ++ch) { // blue, green, red
                const int upper = channel(x0, y0, ch) * (256 - wx) + channel(x1, y0, ch) * wx;
                const int lower = channel(x0, y1, ch) * (256 - wx) + channel(x1, y1, ch) * wx;
                out.push_back(static_cast<std::uint8_t>((upper * (256 - wy) + lower * wy + 32768) >> 16));
            }
        }
    }
    return out;
}

std::vector<std::uint8_t> PixelBytes(const CDibImage& image) {
    std::vector<std::uint8_t> bytes;
    for (int y = 0; y < image.Height(); ++y) {
        const std::uint8_t* row = image.Bits() + static_cast<std::size_t>(image.Height() - 1 - y) * image.RowBytes();
        bytes.insert(bytes.end(), row, row + 3 * image.Width());
    }
    return bytes;
}

void ExpectMatchesReference(int width, int height, float angle, int targetWidth, int targetHeight) {
    const ColorWord fill = MakeColorWord(12, 200, 77);
    auto source = NoisyPicture(width, height, static_cast<unsigned>(width * 7919 + height));
    auto target = MakeImage(targetWidth, targetHeight);
    CImageTransform engine;
    engine.SetTarget(target.get());
    engine.SetSource(source.get());
    engine.SetFillColor(fill);
    ASSERT_EQ(engine.RotateByAngle(angle, true), 1);
    const std::vector<std::uint8_t> expected = ReferenceRotation(*source, targetWidth, targetHeight, angle, fill);
    const std::vector<std::uint8_t> actual = PixelBytes(*target);
    ASSERT_EQ(actual.size(), expected.size());
    const auto mismatch = std::mismatch(actual.begin(), actual.end(), expected.begin());
    ASSERT_TRUE(mismatch.first == actual.end())
        << width << " x " << height << " by " << angle << ": first difference at byte "
        << (mismatch.first - actual.begin()) << " of " << targetWidth << " x " << targetHeight;
}

TEST(RotationReference, BoundingBoxTargetsOfManyShapesAndAngles) {
    const float angles[] = {0.0f,  0.01f,  1.0f,   17.3f,  30.0f,  45.0f,   89.99f,  90.0f,
                            91.5f, 135.0f, 180.0f, 200.25f, 270.0f, 271.0f, 333.33f, 359.0f};
    const int shapes[][2] = {{1, 1}, {2, 3}, {8, 1}, {1, 9}, {13, 7}, {16, 16}, {31, 40}, {64, 9}, {97, 61}};
    for (float angle : angles) {
        for (const auto& shape : shapes) {
            int width = 0;
            int height = 0;
            CImageTransform::RotatedSize(shape[0], shape[1], angle, width, height);
            ExpectMatchesReference(shape[0], shape[1], angle, width, height);
        }
    }
}

// Targets larger and smaller than the turned picture: whole rows uncovered,
// spans cut by both row ends.
TEST(RotationReference, TargetsOfOtherSizes) {
    for (float angle : {0.01f, 30.0f, 89.99f, 180.0f, 359.0f}) {
        ExpectMatchesReference(40, 24, angle, 90, 70);
        ExpectMatchesReference(40, 24, angle, 12, 33);
    }
}

} // namespace
