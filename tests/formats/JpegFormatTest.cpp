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

TEST(Jpeg, FilesTooLargeEvenAtAnEighthAreShrunkWhileTheyStreamIn) {
    TempFolder dir;
    // White above, black below: the shrunk picture must keep that way up.
    auto picture = MakeImage(16000, 800);
    for (int y = 0; y < 400; ++y) {
        for (int x = 0; x < 16000; ++x) {
            picture->SetPixel(x, y, 0xFFFFFF);
        }
    }
    ASSERT_EQ(WriteJpeg(dir.Path("strip.jpg"), *picture, 80), kFileOk);
    PictureFileInfo info;
    auto loaded = Load(dir.Path("strip.jpg"), LoadLimitSize{240, 320}, nullptr, &info);
    ASSERT_TRUE(loaded);
    // 1/8 gives 2000 x 100, fitted into 240 wide.
    EXPECT_EQ(loaded->Width(), 240);
    EXPECT_EQ(loaded->Height(), 12);
    EXPECT_EQ(info.fileWidth, 16000);
    EXPECT_GT(RedOf(loaded->GetPixel(100, 0)), 240);
    EXPECT_LT(RedOf(loaded->GetPixel(100, 11)), 15);
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

TEST(Jpeg, QualityIsReadFromTheSettings) {
    EXPECT_EQ(JpegQuality::Read(), 80);
    platform::Settings::WriteInt("MainSection", "JPGQuality", 35);
    EXPECT_EQ(JpegQuality::Read(), 35);
    JpegQuality::Write(80);
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
