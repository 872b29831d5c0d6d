#include "FormatFixtures.h"

#include "formats/CBmpReader.h"
#include "formats/FileResult.h"
#include "formats/PictureLoader.h"
#include "formats/StreamingScaler.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

// An RLE BMP of `codes` with an 8- or 4-bit table whose entry 1 is orange.
std::vector<std::uint8_t> RunLengthFile(int width, int height, int bits, const std::vector<std::uint8_t>& codes) {
    auto bytes = MakeBmpFile(40, width, height, static_cast<std::uint16_t>(bits),
                             MakeTable({0x000000, 0xFF8000}, std::size_t{1} << bits), codes);
    bytes[30] = bits == 8 ? 1 : 2; // compression
    return bytes;
}

// Tiny files the fuzzers found declaring tall pictures: each took a tenth
// of a second or more, seconds under the sanitizers, to decode rows nobody
// drew. Their bytes could not describe a picture that large.
TEST(RunLengthCost, TinyFilesDeclaringTallPicturesAreRefused) {
    TempFolder dir;
    const LoadLimitSize wide{30000, 30000};
    struct Case {
        const char* name;
        int width;
        int height;
        int bits;
        std::vector<std::uint8_t> codes;
    };
    const Case cases[] = {
        {"RLE8 of 1 KB", 9, 393219, 8, {9, 1, 0, 0, 0, 2, 3, 200, 0, 1}}, // a row, a move up 200, the end
        {"RLE4 of 700 bytes", 519, 52229, 4, std::vector<std::uint8_t>(560, 0)}, // end of line x 279, of picture
    };
    for (Case c : cases) {
        c.codes.back() = 1;
        WriteBytes(dir.Path("tall.bmp"), RunLengthFile(c.width, c.height, c.bits, c.codes));
        std::unique_ptr<CDibImage> picture;
        EXPECT_EQ(LoadPicture(dir.Path("tall.bmp"), wide, picture), kFileFailed) << c.name;
    }
}

// What CBmpReader hands out for a 40 x 1000 RLE8 picture drawn in two
// places: rows that no code reaches come as one run each.
TEST(RunLengthCost, RowsNoCodeReachesComeAsOneRun) {
    std::vector<std::uint8_t> codes = {40, 1, 0, 0};   // stored row 0 drawn, end of line
    codes.insert(codes.end(), {0, 2, 5, 100});         // row 1: move right 5, up 100
    codes.insert(codes.end(), {3, 1, 0, 1});           // row 101: 3 pixels, end of picture
    TempFolder dir;
    WriteBytes(dir.Path("sparse.bmp"), RunLengthFile(40, 1000, 8, codes));
    CBmpReader reader;
    BmpFormat format;
    ASSERT_EQ(reader.Open(dir.Path("sparse.bmp"), format), 1);
    std::vector<std::uint8_t> row(40 * 3);
    std::vector<int> runs;
    std::vector<std::uint8_t> drawn;
    for (int rows = 0; rows < 1000;) {
        const int run = reader.ReadRow(row.data());
        ASSERT_GT(run, 0);
        if (rows == 101) {
            drawn = row;
        }
        runs.push_back(run);
        rows += run;
    }
    EXPECT_EQ(runs, (std::vector<int>{1, 1, 99, 1, 898}));
    EXPECT_EQ(drawn[5 * 3 - 1], 0);      // red of x 4: not reached
    EXPECT_EQ(drawn[5 * 3 + 2], 0xFF);   // red of x 5: drawn orange
    EXPECT_EQ(reader.ReadRow(row.data()), 0);
}

// Source rows in runs of random lengths, delivered once per run or once per
// row, must scale to the same picture; the runs cost one fetch each.
TEST(RunLengthCost, RunsOfIdenticalRowsScaleLikeSingleRows) {
    struct Size {
        int sourceWidth, sourceHeight, width, height;
    };
    for (const Size size : {Size{7, 1000, 3, 37}, Size{5, 50, 5, 50}, Size{9, 393, 4, 392}, Size{6, 100, 6, 7},
                            Size{10, 64, 5, 64}, Size{3, 500, 2, 499}}) {
        std::vector<int> runLengths;
        std::uint32_t seed = 99;
        for (int rows = 0; rows < size.sourceHeight;) {
            seed = seed * 1664525u + 1013904223u;
            runLengths.push_back(1 + static_cast<int>((seed >> 10) % (seed % 3 == 0 ? 90u : 4u)));
            rows += runLengths.back();
        }
        const auto fill = [&size](std::uint8_t* row, std::size_t run) {
            for (int i = 0; i < size.sourceWidth * 3; ++i) {
                row[i] = static_cast<std::uint8_t>(run * 37 + static_cast<std::size_t>(i) * 11);
            }
        };
        const auto scale = [&size](const StreamingScaler::RowFetcher& fetch, bool topFirst) {
            BitmapInfoHeader header;
            InitDibHeader(header, size.width, size.height, 24, 72, 72);
            auto picture = std::make_unique<CDibImage>();
            picture->Create(&header, nullptr);
            EXPECT_EQ(StreamingScaler::Run(size.sourceWidth, size.sourceHeight, *picture, fetch, topFirst), kFileOk);
            return picture;
        };
        for (const bool topFirst : {false, true}) {
            std::size_t run = 0;
            int fetches = 0;
            const auto wholeRuns = scale(
                [&](std::uint8_t* row) {
                    ++fetches;
                    fill(row, run);
                    return runLengths[run++];
                },
                topFirst);
            run = 0;
            int leftOfRun = runLengths[0];
            const auto singleRows = scale(
                [&](std::uint8_t* row) {
                    if (leftOfRun == 0) {
                        leftOfRun = runLengths[++run];
                    }
                    --leftOfRun;
                    fill(row, run);
                    return 1;
                },
                topFirst);
            const std::string what = std::to_string(size.sourceHeight) + " to " + std::to_string(size.height);
            EXPECT_EQ(Psnr(*wholeRuns, *singleRows), 99.0) << what;
            EXPECT_LE(fetches, static_cast<int>(runLengths.size())) << what;
        }
    }
}

} // namespace
