#include "FormatFixtures.h"

#include "formats/FileResult.h"
#include "formats/JpegQuality.h"
#include "formats/JpegWriter.h"
#include "formats/PictureLoader.h"
#include "formats/SafeFileWriter.h"
#include "image/CDibImage.h"
#include "platform/HeapBlock.h"
#include "platform/Settings.h"
#include "support/ImageFixtures.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr LoadLimitSize kLimits{1920, 2560};

std::unique_ptr<CDibImage> Load(const std::string& path, LoadLimitSize limits = kLimits,
                                int* result = nullptr, PictureFileInfo* info = nullptr) {
    std::unique_ptr<CDibImage> picture;
    const int r = LoadPicture(path, limits, picture, info);
    if (result != nullptr) {
        *result = r;
    }
    return picture;
}

// A smooth picture that JPEG keeps well.
std::unique_ptr<CDibImage> MakeSmooth(int width, int height) {
    auto image = MakeImage(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image->SetPixel(x, y, MakeColorWord(x * 255 / width, y * 255 / height, 128));
        }
    }
    return image;
}

double Psnr(const CDibImage& a, const CDibImage& b) {
    double sum = 0;
    for (int y = 0; y < a.Height(); ++y) {
        for (int x = 0; x < a.Width(); ++x) {
            const ColorWord p = a.GetPixel(x, y);
            const ColorWord q = b.GetPixel(x, y);
            for (int shift = 0; shift < 24; shift += 8) {
                const double d =
                    static_cast<int>((p >> shift) & 0xFF) - static_cast<int>((q >> shift) & 0xFF);
                sum += d * d;
            }
        }
    }
    const double mse = sum / (3.0 * a.Width() * a.Height());
    return mse == 0 ? 99.0 : 10 * std::log10(255.0 * 255.0 / mse);
}

TEST(Jpeg, RoundTripsThroughIndependentCodecs) {
    TempFolder dir;
    auto picture = MakeSmooth(97, 61);
    ASSERT_EQ(WriteJpeg(dir.Path("ours.jpg"), *picture, 80), kFileOk);
    auto back = Load(dir.Path("ours.jpg"));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->Width(), 97);
    EXPECT_EQ(back->DpiX(), 72);
    EXPECT_GT(Psnr(*picture, *back), 35.0);

    if (!ToolAvailable("djpeg") || !ToolAvailable("cjpeg")) {
        GTEST_SKIP() << "libjpeg-turbo-progs not installed";
    }
    // djpeg decodes our file to exactly what our reader delivers.
    ASSERT_EQ(RunQuiet("djpeg -bmp -outfile " + dir.Path("djpeg.bmp") + " " + dir.Path("ours.jpg")), 0);
    auto reference = Load(dir.Path("djpeg.bmp"));
    ASSERT_TRUE(reference);
    EXPECT_TRUE(SamePixels(*reference, *back));

    // A file made by cjpeg reads as djpeg reads it.
    ASSERT_EQ(RunQuiet("cjpeg -quality 80 -outfile " + dir.Path("cjpeg.jpg") + " " + dir.Path("djpeg.bmp")),
              0);
    ASSERT_EQ(RunQuiet("djpeg -bmp -outfile " + dir.Path("cjpeg.bmp") + " " + dir.Path("cjpeg.jpg")), 0);
    auto ours = Load(dir.Path("cjpeg.jpg"));
    auto theirs = Load(dir.Path("cjpeg.bmp"));
    ASSERT_TRUE(ours && theirs);
    EXPECT_TRUE(SamePixels(*ours, *theirs));

    // A greyscale JPEG comes in as grey 24-bit pixels.
    ASSERT_EQ(RunQuiet("cjpeg -grayscale -outfile " + dir.Path("grey.jpg") + " " + dir.Path("djpeg.bmp")), 0);
    auto grey = Load(dir.Path("grey.jpg"));
    ASSERT_TRUE(grey);
    const ColorWord pixel = grey->GetPixel(40, 30);
    EXPECT_EQ(RedOf(pixel), GreenOf(pixel));
    EXPECT_EQ(GreenOf(pixel), BlueOf(pixel));
}

TEST(Jpeg, LargeFilesDecodeAtTheLargestScaleThatFitsTheLimits) {
    TempFolder dir;
    auto picture = MakeImage(5000, 4000);
    picture->Clear(MakeColorWord(200, 100, 50));
    ASSERT_EQ(WriteJpeg(dir.Path("big.jpg"), *picture, 80), kFileOk);
    PictureFileInfo info;
    int result = 0;
    auto loaded = Load(dir.Path("big.jpg"), kLimits, &result, &info);
    ASSERT_TRUE(loaded);
    // 1/2 would be 2500 wide; 1/4 fits.
    EXPECT_EQ(loaded->Width(), 1250);
    EXPECT_EQ(loaded->Height(), 1000);
    EXPECT_EQ(info.fileWidth, 5000);
    EXPECT_EQ(info.fileHeight, 4000);
    // JPEG is held to W x H, not 2W x 2H as BMP: 2000 x 1500 fits only at 1/2.
    auto medium = MakeImage(2000, 1500);
    ASSERT_EQ(WriteJpeg(dir.Path("medium.jpg"), *medium, 50), kFileOk);
    EXPECT_EQ(Load(dir.Path("medium.jpg"))->Width(), 1000);
}

TEST(Jpeg, HalvesTheLimitsOnceWhenThePictureCannotBeMade) {
    TempFolder dir;
    auto picture = MakeSmooth(64, 48);
    ASSERT_EQ(WriteJpeg(dir.Path("m.jpg"), *picture, 90), kFileOk);
    int result = 0;
    platform::HeapBlock::FailNextAllocations(1, 1); // the first picture's pixels
    auto halved = Load(dir.Path("m.jpg"), kLimits, &result);
    platform::HeapBlock::FailNextAllocations(0);
    ASSERT_EQ(result, kFileOk);
    EXPECT_EQ(halved->Width(), 32);
    EXPECT_EQ(halved->Height(), 24);

    platform::HeapBlock::FailNextAllocations(2, 1);
    EXPECT_FALSE(Load(dir.Path("m.jpg"), kLimits, &result));
    platform::HeapBlock::FailNextAllocations(0);
    EXPECT_EQ(result, kFileFailed);
}

TEST(Jpeg, CorruptAndTruncatedFilesFail) {
    TempFolder dir;
    auto picture = MakeGradientImage(40, 30);
    ASSERT_EQ(WriteJpeg(dir.Path("good.jpg"), *picture, 80), kFileOk);
    const auto good = ReadBytes(dir.Path("good.jpg"));
    std::vector<std::vector<std::uint8_t>> bad = {
        {0xFF, 0xD8},
        {0xFF, 0xD8, 0xFF, 0xE0, 0x00, 0x10, 'J', 'F', 'I', 'F'},
        std::vector<std::uint8_t>(good.begin(), good.begin() + static_cast<long>(good.size() / 2)),
        std::vector<std::uint8_t>(good.begin(), good.end() - 2),
    };
    auto garbage = std::vector<std::uint8_t>(good.begin(), good.begin() + 2);
    garbage.resize(500, 0x5A);
    bad.push_back(garbage);
    for (std::size_t i = 0; i < bad.size(); ++i) {
        WriteBytes(dir.Path("bad.jpg"), bad[i]);
        int result = 99;
        EXPECT_FALSE(Load(dir.Path("bad.jpg"), kLimits, &result)) << i;
        EXPECT_EQ(result, kFileFailed) << i;
    }
}

TEST(Jpeg, QualityComesFromTheSettingsAndChangesTheFile) {
    EXPECT_EQ(JpegQuality::Read(), 80);
    JpegQuality::Write(35);
    EXPECT_EQ(JpegQuality::Read(), 35);
    platform::Settings::WriteInt("MainSection", "JPGQuality", 400);
    EXPECT_EQ(JpegQuality::Read(), 100);
    JpegQuality::Write(80);

    TempFolder dir;
    auto picture = MakeGradientImage(64, 64);
    ASSERT_EQ(WriteJpeg(dir.Path("low.jpg"), *picture, 5), kFileOk);
    ASSERT_EQ(WriteJpeg(dir.Path("high.jpg"), *picture, 100), kFileOk);
    EXPECT_LT(ReadBytes(dir.Path("low.jpg")).size() * 2, ReadBytes(dir.Path("high.jpg")).size());
}

TEST(Jpeg, AFailedWriteLeavesNothingBehind) {
    TempFolder dir;
    auto picture = MakeGradientImage(300, 200);
    const std::string path = dir.Path("w.jpg");
    SafeFileWriter::FailWritesAfter(1000);
    EXPECT_EQ(WriteJpeg(path, *picture, 80), kFileFailed);
    SafeFileWriter::FailWritesAfter(-1);
    EXPECT_FALSE(FileExists(path));
    EXPECT_FALSE(FileExists(path + ".xxx"));
}

} // namespace
