#include "FormatFixtures.h"

#include "formats/CGifWriter.h"
#include "formats/ColorReducer.h"
#include "formats/FileResult.h"
#include "formats/ImageFileType.h"
#include "formats/PictureLoader.h"
#include "formats/PictureSaver.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "platform/ScreenMetrics.h"
#include "support/ImageFixtures.h"

#include <QImage>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

constexpr std::size_t kHeaderBytes = 13 + 768 + 10; // screen, table, image descriptor

RgbQuad PaletteColor(int i) {
    return RgbQuad{static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(255 - i),
                   static_cast<std::uint8_t>(i * 7), 0};
}

// An 8-bit picture whose 256 table entries are all different, filled by `index`.
template <typename IndexOf> std::unique_ptr<CDibImage> MakeIndexed(int width, int height, IndexOf index) {
    RgbQuad palette[256];
    for (int i = 0; i < 256; ++i) {
        palette[i] = PaletteColor(i);
    }
    BitmapInfoHeader header;
    InitDibHeader(header, width, height, 8, 72, 72);
    auto image = std::make_unique<CDibImage>();
    if (!image->Create(&header, palette)) {
        return nullptr;
    }
    std::vector<std::uint8_t> row(image->RowBytes());
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            row[static_cast<std::size_t>(x)] = static_cast<std::uint8_t>(index(x, y));
        }
        image->SetRow(y, row.data());
    }
    return image;
}

int WriteIndexed(const CDibImage& image, const std::string& path) {
    const platform::HeapBlock packed = image.ToPackedDib();
    CGifWriter writer;
    return writer.WriteGif(packed.data(), packed.size(), path);
}

// Qt's GIF reader must give back every index. It delivers colours; the table
// entries all differ, so equal colours mean equal indices.
void ExpectQtReadsIndices(const std::string& path, const CDibImage& image) {
    QImage decoded(QString::fromStdString(path));
    ASSERT_FALSE(decoded.isNull());
    std::vector<std::uint8_t> row(image.RowBytes());
    for (int y = 0; y < image.Height(); ++y) {
        image.GetRow(y, row.data());
        for (int x = 0; x < image.Width(); ++x) {
            const RgbQuad expected = PaletteColor(row[static_cast<std::size_t>(x)]);
            ASSERT_EQ(decoded.pixel(x, y) & 0xFFFFFFu,
                      qRgb(expected.red, expected.green, expected.blue) & 0xFFFFFFu)
                << x << "," << y;
        }
    }
}

TEST(GifWriter, OnePixelIsClearPixelEndInFourBytes) {
    TempFolder dir;
    auto image = MakeIndexed(1, 1, [](int, int) { return 5; });
    ASSERT_EQ(WriteIndexed(*image, dir.Path("one.gif")), kFileOk);
    const auto bytes = ReadBytes(dir.Path("one.gif"));
    ASSERT_EQ(bytes.size(), kHeaderBytes + 1 + 5 + 2);
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 6), "GIF87a");
    EXPECT_EQ(bytes[10], 0xF7);
    // Entry 7 in red, green, blue order.
    EXPECT_EQ(bytes[13 + 3 * 7], 49);
    EXPECT_EQ(bytes[13 + 3 * 7 + 1], 248);
    EXPECT_EQ(bytes[13 + 3 * 7 + 2], 7);
    EXPECT_EQ(bytes[13 + 768], 0x2C);
    EXPECT_EQ(bytes[kHeaderBytes], 8); // minimum code size
    const std::uint32_t codes = 256u | (5u << 9) | (257u << 18);
    const std::vector<std::uint8_t> data = {4,
                                            static_cast<std::uint8_t>(codes),
                                            static_cast<std::uint8_t>(codes >> 8),
                                            static_cast<std::uint8_t>(codes >> 16),
                                            static_cast<std::uint8_t>(codes >> 24),
                                            0x00,
                                            0x3B};
    EXPECT_EQ(std::vector<std::uint8_t>(bytes.begin() + kHeaderBytes + 1, bytes.end()), data);
}

TEST(GifWriter, FlatAndNoisyPicturesDecodeToTheSameIndices) {
    TempFolder dir;
    auto flat = MakeIndexed(100, 100, [](int, int) { return 200; });
    ASSERT_EQ(WriteIndexed(*flat, dir.Path("flat.gif")), kFileOk);
    const auto flatBytes = ReadBytes(dir.Path("flat.gif"));
    EXPECT_LT(flatBytes.size(), kHeaderBytes + 400);
    EXPECT_EQ(flatBytes[flatBytes.size() - 2], 0x00);
    EXPECT_EQ(flatBytes.back(), 0x3B);
    ExpectQtReadsIndices(dir.Path("flat.gif"), *flat);

    // Random indices fill the 4095-entry table many times over, so the clear
    // code and the return to 9-bit codes are exercised; an odd width pads rows.
    std::mt19937 random(7);
    auto noisy = MakeIndexed(301, 257, [&random](int, int) { return static_cast<int>(random() & 0xFF); });
    ASSERT_EQ(WriteIndexed(*noisy, dir.Path("noisy.gif")), kFileOk);
    ExpectQtReadsIndices(dir.Path("noisy.gif"), *noisy);

    // A picture with long runs grows long strings before the table fills.
    auto runs = MakeIndexed(640, 480, [](int x, int y) { return (x / 37 + y / 5) % 13; });
    ASSERT_EQ(WriteIndexed(*runs, dir.Path("runs.gif")), kFileOk);
    ExpectQtReadsIndices(dir.Path("runs.gif"), *runs);

    if (!ToolAvailable("gif2rgb")) {
        GTEST_SKIP() << "giflib-tools not installed";
    }
    // giflib's decoder gives the same colours, hence the same indices.
    ASSERT_EQ(RunQuiet("gif2rgb -1 -o " + dir.Path("noisy.rgb") + " " + dir.Path("noisy.gif")), 0);
    const auto rgb = ReadBytes(dir.Path("noisy.rgb"));
    ASSERT_EQ(rgb.size(), 301u * 257u * 3u);
    std::vector<std::uint8_t> row(noisy->RowBytes());
    for (int y = 0; y < 257; ++y) {
        noisy->GetRow(y, row.data());
        for (int x = 0; x < 301; ++x) {
            const RgbQuad expected = PaletteColor(row[static_cast<std::size_t>(x)]);
            const std::size_t at = (static_cast<std::size_t>(y) * 301 + static_cast<std::size_t>(x)) * 3;
            ASSERT_EQ(rgb[at], expected.red) << x << "," << y;
            ASSERT_EQ(rgb[at + 1], expected.green) << x << "," << y;
            ASSERT_EQ(rgb[at + 2], expected.blue) << x << "," << y;
        }
    }
}

TEST(GifReading, CutShortFilesAreRefusedAndExtensionsSkipped) {
    TempFolder dir;
    std::mt19937 random(11);
    auto noisy = MakeIndexed(64, 48, [&random](int, int) { return static_cast<int>(random() & 0xFF); });
    ASSERT_EQ(WriteIndexed(*noisy, dir.Path("whole.gif")), kFileOk);
    const auto whole = ReadBytes(dir.Path("whole.gif"));
    const LoadLimitSize limits{1920, 2560};
    struct Case {
        std::size_t keep;
        int expected;
    };
    // Qt alone would show the first two as pictures with a blank lower part.
    const Case cases[] = {{whole.size() * 3 / 5, kFileFailed},
                          {whole.size() - 2, kFileFailed}, // no block terminator
                          {kHeaderBytes - 5, kFileFailed},
                          {whole.size() - 1, kFileOk}}; // only the trailer missing
    for (const Case& c : cases) {
        WriteBytes(dir.Path("cut.gif"),
                   std::vector<std::uint8_t>(whole.begin(), whole.begin() + static_cast<long>(c.keep)));
        std::unique_ptr<CDibImage> picture;
        EXPECT_EQ(LoadPicture(dir.Path("cut.gif"), limits, picture), c.expected) << c.keep;
    }

    // A GIF89a with a graphic control extension ahead of the image.
    std::vector<std::uint8_t> extended(whole.begin(), whole.begin() + 13 + 768);
    extended[4] = '9';
    extended.insert(extended.end(), {0x21, 0xF9, 0x04, 0x00, 0x00, 0x00, 0x00, 0x00});
    extended.insert(extended.end(), whole.begin() + 13 + 768, whole.end());
    WriteBytes(dir.Path("extended.gif"), extended);
    std::unique_ptr<CDibImage> picture;
    ASSERT_EQ(LoadPicture(dir.Path("extended.gif"), limits, picture), kFileOk);
    EXPECT_EQ(picture->Width(), 64);
}

TEST(GifWriter, OnlyTrueColourPicturesAreSavedAsGif) {
    TempFolder dir;
    auto mask = CreateMask(8, 8, false);
    EXPECT_EQ(SavePicture(dir.Path("mask.gif"), *mask, 80), kFileFailed);
    EXPECT_FALSE(FileExists(dir.Path("mask.gif")));
}

TEST(ColorReduction, FewColoursComeBackExactlyAndManyStayClose) {
    TempFolder dir;
    // Exactly 256 colours: every pixel must survive the save.
    auto few = MakeImage(64, 32);
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 64; ++x) {
            const int i = (x + 64 * y) % 256;
            few->SetPixel(x, y, MakeColorWord(i, (i * 37) & 0xFF, (i * 101) & 0xFF));
        }
    }
    ASSERT_EQ(SavePicture(dir.Path("few.GIF"), *few, 80), kFileOk);
    EXPECT_EQ(GetImageFileType(dir.Path("few.GIF")), kFileTypeGif);
    std::unique_ptr<CDibImage> back;
    platform::ScreenMetrics::SetLogicalDpi(120, 120);
    ASSERT_EQ(LoadPicture(dir.Path("few.GIF"), LoadLimitSize{1920, 2560}, back), kFileOk);
    platform::ScreenMetrics::SetLogicalDpi(96, 96);
    EXPECT_TRUE(SamePixels(*few, *back));
    // Decoded by the platform decoder: the screen's resolution, not the file's.
    EXPECT_EQ(back->DpiX(), 120);

    // A smooth photo-like picture with thousands of colours.
    auto photo = MakeImage(256, 192);
    std::mt19937 random(3);
    for (int y = 0; y < 192; ++y) {
        for (int x = 0; x < 256; ++x) {
            const int n = static_cast<int>(random() % 9) - 4;
            photo->SetPixel(x, y,
                            MakeColorWord(std::clamp(x + n, 0, 255), std::clamp(y + 40 + n, 0, 255),
                                          (x * y / 200) & 0xFF));
        }
    }
    const auto reduced = ColorReducer::Reduce(*photo);
    ASSERT_TRUE(reduced);
    EXPECT_EQ(reduced->BitsPerPixel(), 8);
    EXPECT_EQ(reduced->ColorCount(), 256);
    auto expanded = MakeImage(256, 192);
    std::vector<std::uint8_t> indices(reduced->RowBytes());
    for (int y = 0; y < 192; ++y) {
        reduced->GetRow(y, indices.data());
        for (int x = 0; x < 256; ++x) {
            ColorWord color = 0;
            reduced->GetPaletteColor(indices[static_cast<std::size_t>(x)], color);
            expanded->SetPixel(x, y, color);
        }
    }
    EXPECT_GT(Psnr(*photo, *expanded), 32.0);
}

} // namespace
