#include "FormatFixtures.h"

#include "formats/BmpLoader.h"
#include "formats/BmpWriter.h"
#include "formats/FileResult.h"
#include "formats/PictureLoader.h"
#include "ops/RowResampler.h"
#include "image/CDibImage.h"
#include "platform/HeapBlock.h"
#include "support/ImageFixtures.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

constexpr LoadLimitSize kLimits{1920, 2560};

std::unique_ptr<CDibImage> Load(const std::string& path, PictureFileInfo* info = nullptr,
                                LoadLimitSize limits = kLimits, int* result = nullptr) {
    std::unique_ptr<CDibImage> picture;
    const int r = LoadPicture(path, limits, picture, info);
    if (result != nullptr) {
        *result = r;
    }
    return picture;
}

TEST(BmpReader, ExpandsPalettedRowsThroughTheTable) {
    TempFolder dir;
    // 1 bit, 10 wide: bits 1010000011 in a 4-byte row.
    const auto table1 = MakeTable({0x102030, 0xA0B0C0}, 2);
    WriteBytes(dir.Path("one.bmp"), MakeBmpFile(40, 10, 1, 1, table1, {0xA0, 0xC0, 0, 0}));
    auto one = Load(dir.Path("one.bmp"));
    ASSERT_TRUE(one);
    EXPECT_EQ(one->BitsPerPixel(), 24);
    EXPECT_EQ(one->DpiX(), 72);
    const ColorWord a = MakeColorWord(0x10, 0x20, 0x30);
    const ColorWord b = MakeColorWord(0xA0, 0xB0, 0xC0);
    const ColorWord expected[10] = {b, a, b, a, a, a, a, a, b, b};
    for (int x = 0; x < 10; ++x) {
        EXPECT_EQ(one->GetPixel(x, 0), expected[x]) << x;
    }

    // 4 bits, 3 wide: the last byte's low nibble is padding and ignored.
    const auto table4 = MakeTable({0x000000, 0x0000FF, 0x00FF00, 0xFF0000}, 16);
    WriteBytes(dir.Path("four.bmp"), MakeBmpFile(40, 3, 1, 4, table4, {0x12, 0x3F, 0, 0}));
    auto four = Load(dir.Path("four.bmp"));
    ASSERT_TRUE(four);
    EXPECT_EQ(four->GetPixel(0, 0), MakeColorWord(0, 0, 0xFF));
    EXPECT_EQ(four->GetPixel(1, 0), MakeColorWord(0, 0xFF, 0));
    EXPECT_EQ(four->GetPixel(2, 0), MakeColorWord(0xFF, 0, 0));

    // 12-byte header with 16-bit sizes and a table of 3-byte entries.
    // Two rows, stored bottom first.
    std::vector<std::uint8_t> table8;
    for (const std::uint8_t grey : {0x11, 0x22, 0x33}) {
        table8.insert(table8.end(), 3, grey);
    }
    WriteBytes(dir.Path("core.bmp"), MakeBmpFile(12, 2, 2, 8, table8, {1, 2, 0, 0, 2, 0, 0, 0}));
    auto core = Load(dir.Path("core.bmp"));
    ASSERT_TRUE(core);
    EXPECT_EQ(core->GetPixel(0, 0), 0x333333u);
    EXPECT_EQ(core->GetPixel(1, 0), 0x111111u);
    EXPECT_EQ(core->GetPixel(0, 1), 0x222222u);
    EXPECT_EQ(core->GetPixel(1, 1), 0x333333u);
}

TEST(BmpReader, FitsLargeFilesIntoTwiceTheLimits) {
    EXPECT_EQ(FitBmpSize(5000, 3000, 3840, 5120).width, 3840);
    EXPECT_EQ(FitBmpSize(5000, 3000, 3840, 5120).height, 2304);
    // Too tall after the width fit: the height decides, rounded to nearest.
    EXPECT_EQ(FitBmpSize(5000, 9000, 3840, 5120).width, 2844);
    EXPECT_EQ(FitBmpSize(5000, 9000, 3840, 5120).height, 5120);
    EXPECT_EQ(FitBmpSize(100, 6000, 3840, 5120).width, 85);
    EXPECT_EQ(FitBmpSize(3840, 5120, 3840, 5120).width, 3840);
    // A sliver never collapses to nothing.
    EXPECT_EQ(FitBmpSize(100000, 1, 3840, 5120).height, 1);

    TempFolder dir;
    // A 1-bit 5000 x 3000 file keeps the test file small.
    const std::uint32_t rowBytes = (5000 + 31) / 32 * 4;
    std::vector<std::uint8_t> rows(rowBytes * 3000, 0xFF);
    WriteBytes(dir.Path("big.bmp"), MakeBmpFile(40, 5000, 3000, 1, MakeTable({0, 0x808080}, 2), rows));
    PictureFileInfo info;
    auto big = Load(dir.Path("big.bmp"), &info);
    ASSERT_TRUE(big);
    EXPECT_EQ(big->Width(), 3840);
    EXPECT_EQ(big->Height(), 2304);
    EXPECT_EQ(info.fileWidth, 5000);
    EXPECT_EQ(info.fileHeight, 3000);
    EXPECT_EQ(big->GetPixel(1234, 2000), 0x808080u);
}

TEST(BmpReader, ShrinkingAveragesTheRowsAndColumnsThatFallOnEachPixel) {
    // 4 x 4 grey ramp loaded into limits of 1 x 1, so the box is 2 x 2.
    TempFolder dir;
    std::vector<std::uint8_t> rows;
    for (int stored = 0; stored < 4; ++stored) {
        for (int x = 0; x < 4; ++x) {
            const auto v = static_cast<std::uint8_t>(stored * 40 + x * 10);
            rows.insert(rows.end(), {v, v, v});
        }
    }
    WriteBytes(dir.Path("ramp.bmp"), MakeBmpFile(40, 4, 4, 24, {}, rows));
    auto small = Load(dir.Path("ramp.bmp"), nullptr, LoadLimitSize{1, 1});
    ASSERT_TRUE(small);
    ASSERT_EQ(small->Width(), 2);
    ASSERT_EQ(small->Height(), 2);
    // Columns pair up (0,10 -> 5; 20,30 -> 25). The row counter starts at half
    // the source height, so the bottom output row is stored row 0 alone and
    // the top one averages stored rows 1 and 2 (row 3 finds the picture full).
    EXPECT_EQ(small->GetPixel(0, 1), 0x050505u);
    EXPECT_EQ(small->GetPixel(1, 1), 0x191919u);
    EXPECT_EQ(small->GetPixel(0, 0), 0x414141u);
    EXPECT_EQ(small->GetPixel(1, 0), 0x555555u);

    // The row resampler alone: 3 pixels onto 2, each covering 1.5 of them.
    const std::uint8_t source[9] = {0, 0, 0, 90, 90, 90, 180, 180, 180};
    std::uint8_t target[6] = {};
    RowResampler resampler(3, 2);
    ASSERT_TRUE(resampler.IsValid());
    resampler.Resample(source, target);
    EXPECT_EQ(target[0], 30);  // (0 + 0.5 x 90) / 1.5
    EXPECT_EQ(target[3], 150); // (0.5 x 90 + 180) / 1.5

    // Enlarging (for the Rescale command): 2 onto 3, the middle one blends.
    const std::uint8_t pair[6] = {0, 0, 0, 99, 99, 99};
    std::uint8_t three[9] = {};
    RowResampler enlarge(2, 3);
    enlarge.Resample(pair, three);
    EXPECT_EQ(three[0], 0);
    EXPECT_EQ(three[3], 50); // half of each, rounded to nearest
    EXPECT_EQ(three[6], 99);
}

TEST(BmpReader, RefusesBrokenFiles) {
    TempFolder dir;
    const std::vector<std::uint8_t> row24(12, 0x40);
    const auto good = MakeBmpFile(40, 4, 1, 24, {}, row24);
    struct Case {
        const char* name;
        std::vector<std::uint8_t> bytes;
    };
    std::vector<Case> cases = {
        {"empty", {}},
        {"short", {'B', 'M', 0, 0, 0}},
        {"signature only", {'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 40, 0, 0}},
        {"header 11", MakeBmpFile(11, 4, 1, 24, {}, row24)},
        {"zero width", MakeBmpFile(40, 0, 1, 24, {}, row24)},
        {"width 2^31", MakeBmpFile(40, INT32_MIN, 1, 24, {}, row24)},
        {"huge width", MakeBmpFile(40, 0x7FFFFFFF, 0x7FFFFFFF, 24, {}, row24)},
        {"bit count 0", MakeBmpFile(40, 4, 1, 0, {}, row24)},
        {"bit count 3", MakeBmpFile(40, 4, 1, 3, {}, row24)},
        {"truncated rows", MakeBmpFile(40, 4, 2, 24, {}, row24)},
        {"garbage after signature",
         {'B', 'M', 0x13, 0x77, 0xFF, 0xFF, 0xFF, 0xFF, 1, 2, 3, 4, 5, 6, 7, 8, 9}},
    };
    cases.push_back({"good", good});
    for (const Case& c : cases) {
        const std::string path = dir.Path("bad.bmp");
        WriteBytes(path, c.bytes);
        int result = 99;
        PictureFileInfo info;
        auto picture = Load(path, &info, kLimits, &result);
        if (std::string(c.name) == "good") {
            EXPECT_EQ(result, kFileOk);
            continue;
        }
        EXPECT_EQ(result, kFileFailed) << c.name;
        EXPECT_FALSE(picture) << c.name;
    }

    // Not files at all.
    int result = 99;
    EXPECT_FALSE(Load(dir.Path(""), nullptr, kLimits, &result));
    EXPECT_EQ(result, kFileFailed);
    const std::string fifo = dir.Path("pipe.bmp");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_FALSE(Load(fifo, nullptr, kLimits, &result));
    EXPECT_EQ(result, kFileFailed);
    EXPECT_FALSE(Load(dir.Path("missing.bmp"), nullptr, kLimits, &result));
}

TEST(BmpReader, OutOfMemoryIsReportedAndHalvingIsTriedOnce) {
    TempFolder dir;
    const auto bytes = MakeBmpFile(40, 8, 6, 24, {}, std::vector<std::uint8_t>(24 * 6, 0x55));
    WriteBytes(dir.Path("m.bmp"), bytes);
    int result = 0;
    PictureFileInfo info;
    // The reader takes its input buffer and row buffer, then the picture's
    // header and bits come from the heap: the first picture fails, the
    // half-size one works.
    platform::HeapBlock::FailNextAllocations(1, 3);
    auto halved = Load(dir.Path("m.bmp"), &info, kLimits, &result);
    platform::HeapBlock::FailNextAllocations(0);
    ASSERT_EQ(result, kFileOk);
    EXPECT_EQ(halved->Width(), 4);
    EXPECT_EQ(halved->Height(), 3);
    EXPECT_EQ(halved->GetPixel(3, 2), 0x555555u);

    platform::HeapBlock::FailNextAllocations(100, 1);
    EXPECT_FALSE(Load(dir.Path("m.bmp"), nullptr, kLimits, &result));
    platform::HeapBlock::FailNextAllocations(0);
    EXPECT_EQ(result, kFileOutOfMemory);
}

TEST(BmpWriter, WritesThePictureAsHeldBehindAFileHeader) {
    TempFolder dir;
    auto picture = MakeGradientImage(5, 3);
    picture->SetResolution(150, 150);
    const std::string path = dir.Path("out.bmp");
    ASSERT_EQ(WriteBmp(path, *picture), kFileOk);
    const auto bytes = ReadBytes(path);
    ASSERT_EQ(bytes.size(), 54u + picture->ImageBytes());
    EXPECT_EQ(bytes[0], 'B');
    EXPECT_EQ(bytes[1], 'M');
    auto u32 = [&](std::size_t at) {
        return static_cast<std::uint32_t>(bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16 |
                                          bytes[at + 3] << 24);
    };
    EXPECT_EQ(u32(2), 54u + picture->ImageBytes());
    EXPECT_EQ(u32(10), 54u);
    EXPECT_EQ(u32(14), 40u);
    EXPECT_EQ(u32(34), picture->ImageBytes());
    EXPECT_EQ(u32(38), 150u * 10000 / 254);
    EXPECT_FALSE(FileExists(path + ".xxx"));

    // Read back: same pixels, but a loaded BMP always carries 72 dpi.
    auto back = Load(path);
    ASSERT_TRUE(back);
    EXPECT_TRUE(SamePixels(*picture, *back));
    EXPECT_EQ(back->DpiX(), 72);

    platform::HeapBlock::FailNextAllocations(1, 1);
    EXPECT_EQ(WriteBmp(dir.Path("oom.bmp"), *picture), kFileOutOfMemory);
    platform::HeapBlock::FailNextAllocations(0);
    EXPECT_FALSE(FileExists(dir.Path("oom.bmp")));
    EXPECT_FALSE(FileExists(dir.Path("oom.bmp.xxx")));
}

} // namespace
