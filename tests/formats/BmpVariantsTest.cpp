#include "FormatFixtures.h"

#include "formats/FileResult.h"
#include "formats/PictureLoader.h"
#include "image/CDibImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>

namespace {

constexpr LoadLimitSize kLimits{1920, 2560};

// A BMP file with every header field a test may want to set. Masks go into a
// header of 52 bytes or more, else right after it.
struct BmpRecipe {
    std::uint32_t headerSize = 40;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint16_t bits = 24;
    std::uint32_t compression = 0;
    std::uint32_t colorsUsed = 0;
    std::vector<std::uint32_t> masks{};
    std::vector<std::uint8_t> table{};
    std::vector<std::uint8_t> gap{}; // bytes between the table and the pixels
    std::vector<std::uint8_t> pixels{};
};

std::vector<std::uint8_t> Build(const BmpRecipe& recipe) {
    std::vector<std::uint8_t> header;
    if (recipe.headerSize == 12) {
        Put16(header, static_cast<std::uint32_t>(recipe.width));
        Put16(header, static_cast<std::uint32_t>(recipe.height));
        Put16(header, 1);
        Put16(header, recipe.bits);
    } else {
        Put32(header, static_cast<std::uint32_t>(recipe.width));
        Put32(header, static_cast<std::uint32_t>(recipe.height));
        Put16(header, 1);
        Put16(header, recipe.bits);
        for (std::uint32_t field : {recipe.compression, 0u, 2835u, 2835u, recipe.colorsUsed, 0u}) {
            Put32(header, field);
        }
        if (recipe.headerSize >= 52) {
            for (std::uint32_t mask : recipe.masks) {
                Put32(header, mask);
            }
        }
        header.resize(recipe.headerSize - 4, 0);
        if (recipe.headerSize < 52) {
            for (std::uint32_t mask : recipe.masks) {
                Put32(header, mask);
            }
        }
    }
    std::vector<std::uint8_t> out = {'B', 'M'};
    const auto offset = static_cast<std::uint32_t>(18 + header.size() + recipe.table.size() + recipe.gap.size());
    Put32(out, static_cast<std::uint32_t>(offset + recipe.pixels.size()));
    Put32(out, 0);
    Put32(out, offset);
    Put32(out, recipe.headerSize);
    const std::vector<std::uint8_t>& head = header;
    for (const std::vector<std::uint8_t>* part : {&head, &recipe.table, &recipe.gap, &recipe.pixels}) {
        out.insert(out.end(), part->begin(), part->end());
    }
    return out;
}

// Loads a recipe through the whole loader; null on failure.
std::unique_ptr<CDibImage> LoadRecipe(const BmpRecipe& recipe, int* result = nullptr) {
    TempFolder dir;
    WriteBytes(dir.Path("v.bmp"), Build(recipe));
    std::unique_ptr<CDibImage> picture;
    const int r = LoadPicture(dir.Path("v.bmp"), kLimits, picture);
    if (result != nullptr) {
        *result = r;
    }
    return picture;
}

std::vector<ColorWord> Row(const CDibImage& picture, int y) {
    std::vector<ColorWord> row;
    for (int x = 0; x < picture.Width(); ++x) {
        row.push_back(picture.GetPixel(x, y));
    }
    return row;
}

// 3 x 2 pixels, top row red, green, blue; bottom row white, grey, black.
const ColorWord kTop[3] = {0x0000FF, 0x00FF00, 0xFF0000};
const ColorWord kBottom[3] = {0xFFFFFF, 0x808080, 0x000000};

std::vector<std::uint8_t> Rows24(bool topDown) {
    std::vector<std::uint8_t> rows;
    for (const ColorWord* line : topDown ? std::vector{kTop, kBottom} : std::vector{kBottom, kTop}) {
        for (int x = 0; x < 3; ++x) {
            rows.insert(rows.end(), {static_cast<std::uint8_t>(line[x] >> 16), static_cast<std::uint8_t>(line[x] >> 8),
                                     static_cast<std::uint8_t>(line[x])});
        }
        rows.resize(rows.size() + 3, 0); // padding to 12 bytes
    }
    return rows;
}

void ExpectTwoRows(const CDibImage* picture, const std::string& what) {
    ASSERT_TRUE(picture) << what;
    EXPECT_EQ(Row(*picture, 0), std::vector<ColorWord>(kTop, kTop + 3)) << what;
    EXPECT_EQ(Row(*picture, 1), std::vector<ColorWord>(kBottom, kBottom + 3)) << what;
}

TEST(BmpVariants, EveryHeaderSizeAndTopDownRowsGiveTheSamePicture) {
    for (std::uint32_t headerSize : {12u, 16u, 40u, 52u, 56u, 64u, 108u, 124u}) {
        BmpRecipe recipe{.headerSize = headerSize, .width = 3, .height = 2, .pixels = Rows24(false)};
        if (headerSize >= 52) {
            recipe.masks = {0xFF0000, 0xFF00, 0xFF, 0};
        }
        ExpectTwoRows(LoadRecipe(recipe).get(), "header " + std::to_string(headerSize));
        if (headerSize != 12) {
            recipe.height = -2;
            recipe.pixels = Rows24(true);
            ExpectTwoRows(LoadRecipe(recipe).get(), "top-down header " + std::to_string(headerSize));
        }
    }
}

TEST(BmpVariants, ShortTablesTwoBitPalettesAndThePixelOffset) {
    const auto table = MakeTable({0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF}, 4); // red, green, blue, white
    // 2 bits: indices 0 1 2 3 | 3 2 1 0 across 4 pixels, rows bottom first.
    BmpRecipe two{.width = 4, .height = 2, .bits = 2, .colorsUsed = 4, .table = table,
                .pixels = {0xE4, 0, 0, 0, 0x1B, 0, 0, 0}};
    auto picture = LoadRecipe(two);
    ASSERT_TRUE(picture);
    EXPECT_EQ(Row(*picture, 0), (std::vector<ColorWord>{0x0000FF, 0x00FF00, 0xFF0000, 0xFFFFFF}));
    EXPECT_EQ(Row(*picture, 1), (std::vector<ColorWord>{0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF}));

    // 8 bits with a three-entry table, a gap (a profile, say) before the
    // pixels; an index beyond the table is black.
    BmpRecipe eight{.width = 4, .height = 1, .bits = 8, .colorsUsed = 3, .table = MakeTable({1, 2, 3}, 3),
                  .gap = std::vector<std::uint8_t>(37, 0xEE), .pixels = {2, 1, 0, 200}};
    picture = LoadRecipe(eight);
    ASSERT_TRUE(picture);
    EXPECT_EQ(Row(*picture, 0), (std::vector<ColorWord>{0x030000, 0x020000, 0x010000, 0}));
    // A table with more entries than the depth needs: the offset still finds the pixels.
    eight.colorsUsed = 0;
    eight.table = MakeTable({1, 2, 3}, 300);
    eight.gap.clear();
    picture = LoadRecipe(eight);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetPixel(0, 0), 0x030000u);
}

// Pixels of one mask layout; each expected colour is 0x00BBGGRR.
struct FieldCase {
    const char* name;
    BmpRecipe recipe;
    std::vector<ColorWord> expected;
};

TEST(BmpVariants, BitFieldsScaleEachChannelToEightBitsAndAlphaLiesOverWhite) {
    const std::vector<FieldCase> cases = {
        // 16 bits, default 5-5-5: full red, half green (15/31), blue 1/31.
        {"555", {.width = 2, .height = 1, .bits = 16, .pixels = {0x00, 0x7C, 0xE1, 0x01}},
         {0x0000FF, 0x087B00}},
        {"565", {.width = 2, .height = 1, .bits = 16, .compression = 3, .masks = {0xF800, 0x07E0, 0x001F},
                 .pixels = {0xE0, 0x07, 0x1F, 0x00}},
         {0x00FF00, 0xFF0000}},
        {"888 default", {.width = 1, .height = 1, .bits = 32, .pixels = {0x10, 0x20, 0x30, 0x99}}, {0x102030}},
        // 10-10-10-2 in a 40-byte header with the masks after it: red 1023,
        // green 512 (-> 128), blue 0.
        {"10-10-10", {.width = 1, .height = 1, .bits = 32, .compression = 3,
                      .masks = {0x3FF00000, 0x000FFC00, 0x000003FF}, .pixels = {0x00, 0x00, 0xF8, 0x3F}},
         {0x0080FF}},
        // Alpha bit fields (four masks after a 40-byte header): half-transparent black.
        {"alpha", {.width = 1, .height = 1, .bits = 32, .compression = 6,
                   .masks = {0xFF0000, 0xFF00, 0xFF, 0xFF000000}, .pixels = {0, 0, 0, 0x80}},
         {0x7F7F7F}},
        // A V5 header's alpha mask: transparent red is white.
        {"v5 alpha", {.headerSize = 124, .width = 1, .height = 1, .bits = 32, .compression = 3,
                      .masks = {0xFF0000, 0xFF00, 0xFF, 0xFF000000}, .pixels = {0, 0, 0xFF, 0}},
         {0xFFFFFF}},
    };
    for (const FieldCase& c : cases) {
        auto picture = LoadRecipe(c.recipe);
        ASSERT_TRUE(picture) << c.name;
        EXPECT_EQ(Row(*picture, 0), c.expected) << c.name;
    }
}

// The loader says whether the file had transparent pixels, so that saving
// over it can ask first; an alpha channel that is opaque everywhere is not.
TEST(BmpVariants, ReportsTransparencyOnlyWhenSomePixelIsNotOpaque) {
    TempFolder dir;
    const auto transparent = [&dir](std::vector<std::uint8_t> pixels, std::uint32_t alphaMask) {
        BmpRecipe recipe{.width = 2, .height = 1, .bits = 32, .compression = 6,
                     .masks = {0xFF0000, 0xFF00, 0xFF, alphaMask}, .pixels = std::move(pixels)};
        WriteBytes(dir.Path("a.bmp"), Build(recipe));
        std::unique_ptr<CDibImage> picture;
        PictureFileInfo info;
        EXPECT_EQ(LoadPicture(dir.Path("a.bmp"), kLimits, picture, &info), kFileOk);
        return info.transparent;
    };
    EXPECT_TRUE(transparent({1, 2, 3, 0xFF, 1, 2, 3, 0xFE}, 0xFF000000));
    EXPECT_FALSE(transparent({1, 2, 3, 0xFF, 1, 2, 3, 0xFF}, 0xFF000000));
    EXPECT_FALSE(transparent({1, 2, 3, 0x00, 1, 2, 3, 0x00}, 0)) << "no alpha mask: the fourth byte is unused";
}

// The rule for one channel, pixel by pixel: the mask's bits (the top 12 of
// a wider one) scaled to 0..255 with rounding.
int ChannelOf(std::uint32_t pixel, std::uint32_t mask) {
    if (mask == 0) {
        return 0;
    }
    const int shift = std::countr_zero(mask);
    const int bits = 32 - std::countl_zero(mask) - shift;
    const int drop = std::max(0, bits - 12);
    const std::uint32_t most = (1u << (bits - drop)) - 1;
    const std::uint32_t v = (pixel >> shift >> drop) & most;
    return static_cast<int>((v * 255 + most / 2) / most);
}

// Rows much wider than any vector step, with a ragged end, in every stored
// layout, against a decoding of each pixel on its own: random indices into a
// table shorter than 256 entries, and random bit-field pixels of narrow,
// wide, dropped and alpha channels.
TEST(BmpVariants, WideRowsOfEveryLayoutMatchAPixelByPixelDecoding) {
    constexpr int kWidth = 150;
    constexpr int kHeight = 3;
    struct Layout {
        const char* name;
        std::uint16_t bits;
        std::vector<std::uint32_t> masks; // red, green, blue[, alpha]; none: indices
    };
    const std::vector<Layout> layouts = {
        {"8-bit indices", 8, {}},
        {"4-bit indices", 4, {}},
        {"565", 16, {0xF800, 0x07E0, 0x001F}},
        {"5-5-5 without green", 16, {0x7C00, 0, 0x001F}},
        {"4-4-4 with 4-bit alpha", 16, {0x0F00, 0x00F0, 0x000F, 0xF000}},
        {"8-8-8", 32, {0xFF0000, 0xFF00, 0xFF}},
        {"8-8-8 with alpha", 32, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}},
        {"8-8-8 reversed, alpha in the low byte", 32, {0xFF00, 0xFF0000, 0xFF000000, 0xFF}},
        {"10-10-10", 32, {0x3FF00000, 0x000FFC00, 0x000003FF}},
        {"10-10-10 with 2-bit alpha", 32, {0x3FF00000, 0x000FFC00, 0x000003FF, 0xC0000000}},
        {"14, 6 and 12 bits", 32, {0xFFFC0000, 0x0003F000, 0x00000FFF}},
        {"11-11-10", 32, {0xFFE00000, 0x001FFC00, 0x000003FF}},
        {"9, 1 and none", 32, {0x1FF, 0x200, 0}},
    };
    std::vector<ColorWord> palette;
    std::vector<std::uint8_t> table; // blue, green, red, 0
    for (int i = 0; i < 200; ++i) {
        palette.push_back(MakeColorWord(i * 7 + 1, 255 - i, i * 3 + 40));
        table.insert(table.end(), {static_cast<std::uint8_t>(i * 3 + 40), static_cast<std::uint8_t>(255 - i),
                                   static_cast<std::uint8_t>(i * 7 + 1), 0});
    }
    std::uint32_t seed = 99;
    for (const Layout& layout : layouts) {
        BmpRecipe recipe{.width = kWidth, .height = kHeight, .bits = layout.bits, .masks = layout.masks};
        if (layout.masks.empty()) {
            recipe.colorsUsed = layout.bits == 8 ? 200 : 16;
            recipe.table.assign(table.begin(), table.begin() + 4 * recipe.colorsUsed);
        } else {
            recipe.compression = layout.masks.size() == 4 ? 6 : 3;
        }
        std::vector<std::vector<ColorWord>> expected(kHeight); // top row first
        for (int stored = 0; stored < kHeight; ++stored) {
            std::vector<std::uint8_t> row;
            for (int x = 0; x < kWidth; ++x) {
                seed = seed * 1664525u + 1013904223u;
                const std::uint32_t pixel = layout.bits == 4 ? seed >> 28 : seed >> (32 - layout.bits);
                ColorWord color = 0;
                if (layout.masks.empty()) {
                    color = pixel < recipe.colorsUsed ? palette[pixel] : 0;
                    if (layout.bits == 4) {
                        row.resize(static_cast<std::size_t>(x / 2 + 1), 0);
                        row.back() |= static_cast<std::uint8_t>(x % 2 == 0 ? pixel << 4 : pixel);
                    } else {
                        row.push_back(static_cast<std::uint8_t>(pixel));
                    }
                } else {
                    int channel[3];
                    const int alpha = layout.masks.size() == 4 ? ChannelOf(pixel, layout.masks[3]) : 255;
                    for (int c = 0; c < 3; ++c) {
                        const int v = ChannelOf(pixel, layout.masks[static_cast<std::size_t>(c)]);
                        channel[c] = (v * alpha + 255 * (255 - alpha) + 127) / 255;
                    }
                    color = MakeColorWord(channel[0], channel[1], channel[2]);
                    for (int b = 0; b < layout.bits / 8; ++b) {
                        row.push_back(static_cast<std::uint8_t>(pixel >> (8 * b)));
                    }
                }
                expected[static_cast<std::size_t>(kHeight - 1 - stored)].push_back(color);
            }
            row.resize((row.size() + 3) / 4 * 4, 0);
            recipe.pixels.insert(recipe.pixels.end(), row.begin(), row.end());
        }
        auto picture = LoadRecipe(recipe);
        ASSERT_TRUE(picture) << layout.name;
        for (int y = 0; y < kHeight; ++y) {
            EXPECT_EQ(Row(*picture, y), expected[static_cast<std::size_t>(y)]) << layout.name << ", row " << y;
        }
    }
}

TEST(BmpVariants, RunLengthCodesWithRunsThatOverflowAreClipped) {
    const auto table = MakeTable({0x000000, 0xFF0000, 0x00FF00, 0x0000FF}, 4); // black, red, green, blue
    // RLE8, 4 x 3, bottom row first: a run of 6 (clipped to 4), end of line;
    // absolute 2,3,1 (padded), end of line; delta right 1 and up 0, run 1 of 2
    // with 5 more pixels beyond the row, end of picture.
    BmpRecipe rle8{.width = 4, .height = 3, .bits = 8, .compression = 1, .colorsUsed = 4, .table = table,
                 .pixels = {6, 1, 0, 0, 0, 3, 2, 3, 1, 0, 0, 0, 0, 2, 1, 0, 6, 2, 0, 1}};
    auto picture = LoadRecipe(rle8);
    ASSERT_TRUE(picture);
    EXPECT_EQ(Row(*picture, 2), std::vector<ColorWord>(4, 0x0000FF));
    EXPECT_EQ(Row(*picture, 1), (std::vector<ColorWord>{0x00FF00, 0xFF0000, 0x0000FF, 0}));
    EXPECT_EQ(Row(*picture, 0), (std::vector<ColorWord>{0, 0x00FF00, 0x00FF00, 0x00FF00}));

    // RLE4, 5 x 2: a run of 2 (1 then 2); a delta up one row leaves the
    // bottom row's rest and the next row's start blank, then absolute 3,1,2
    // (two bytes plus padding), end of picture.
    BmpRecipe rle4{.width = 5, .height = 2, .bits = 4, .compression = 2, .colorsUsed = 4, .table = table,
                 .pixels = {2, 0x12, 0, 2, 0, 1, 0, 3, 0x31, 0x20, 0, 1}};
    picture = LoadRecipe(rle4);
    ASSERT_TRUE(picture);
    EXPECT_EQ(Row(*picture, 1), (std::vector<ColorWord>{0x0000FF, 0x00FF00, 0, 0, 0}));
    EXPECT_EQ(Row(*picture, 0), (std::vector<ColorWord>{0, 0, 0xFF0000, 0x0000FF, 0x00FF00}));

    // Data that stops before the picture is complete fails.
    rle8.pixels = {6, 1, 0, 0, 2};
    int result = 99;
    EXPECT_FALSE(LoadRecipe(rle8, &result));
    EXPECT_EQ(result, kFileFailed);
}

// Long RLE8 rows of every code in random order: short (1 to 8) and long runs,
// absolute runs of odd and even length, moves right, runs past the row's end
// and rows ended early; pixels no code reaches stay index 0 (table entry 0,
// black).
TEST(BmpVariants, LongRunLengthRowsKeepUnreachedPixelsAtIndexZero) {
    constexpr int kWidth = 300;
    constexpr int kHeight = 6;
    std::vector<std::uint8_t> table;
    for (int i = 0; i < 256; ++i) { // entry 0 black
        table.insert(table.end(), {static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i == 0 ? 0 : i ^ 0x55),
                                   static_cast<std::uint8_t>(i == 0 ? 0 : 7), 0});
    }
    std::vector<std::uint8_t> codes;
    std::vector<std::vector<int>> indices(kHeight, std::vector<int>(kWidth, 0)); // stored order
    std::uint32_t seed = 7;
    const auto next = [&seed](int below) {
        seed = seed * 1664525u + 1013904223u;
        return static_cast<int>((seed >> 8) % static_cast<std::uint32_t>(below));
    };
    for (int y = 0; y < kHeight; ++y) {
        const int stop = y == 2 || y == 5 ? 120 : kWidth + 40; // rows 2 and 5 end early
        for (int x = 0; x < stop;) {
            // Rows 3 to 5 are mostly short runs, as a noisy photograph's.
            const int kind = y >= 3 && next(4) != 0 ? 0 : next(10);
            if (kind < 6) { // a run, mostly short
                const int count = kind < 4 ? 1 + next(8) : 9 + next(60);
                const int value = 1 + next(255);
                codes.insert(codes.end(), {static_cast<std::uint8_t>(count), static_cast<std::uint8_t>(value)});
                for (int i = x; i < x + count && i < kWidth; ++i) {
                    indices[static_cast<std::size_t>(y)][static_cast<std::size_t>(i)] = value;
                }
                x += count;
            } else if (kind < 9) { // absolute
                const int count = 3 + next(10);
                codes.insert(codes.end(), {0, static_cast<std::uint8_t>(count)});
                for (int i = 0; i < count; ++i) {
                    const int value = 1 + next(255);
                    codes.push_back(static_cast<std::uint8_t>(value));
                    if (x + i < kWidth) {
                        indices[static_cast<std::size_t>(y)][static_cast<std::size_t>(x + i)] = value;
                    }
                }
                codes.resize(codes.size() + (count & 1), 0);
                x += count;
            } else { // move right, leaving pixels unreached
                const int dx = 1 + next(12);
                codes.insert(codes.end(), {0, 2, static_cast<std::uint8_t>(dx), 0});
                x += dx;
            }
        }
        codes.insert(codes.end(), {0, 0});
    }
    codes.insert(codes.end(), {0, 1});
    BmpRecipe recipe{.width = kWidth, .height = kHeight, .bits = 8, .compression = 1, .colorsUsed = 256,
                 .table = table, .pixels = codes};
    auto picture = LoadRecipe(recipe);
    ASSERT_TRUE(picture);
    for (int y = 0; y < kHeight; ++y) {
        std::vector<ColorWord> expected;
        for (int index : indices[static_cast<std::size_t>(kHeight - 1 - y)]) {
            expected.push_back(index == 0 ? 0 : MakeColorWord(7, index ^ 0x55, index));
        }
        EXPECT_EQ(Row(*picture, y), expected) << "row " << y;
    }
}

TEST(BmpVariants, FilesThisReaderCannotDecodeFailCleanly) {
    const std::vector<std::uint8_t> row(12, 0x40);
    const std::vector<std::pair<const char*, BmpRecipe>> cases = {
        {"embedded JPEG", {.width = 4, .height = 1, .bits = 24, .compression = 4, .pixels = {0xFF, 0xD8, 0xFF}}},
        {"embedded PNG", {.width = 4, .height = 1, .bits = 24, .compression = 5, .pixels = {0x89, 'P', 'N'}}},
        {"OS/2 Huffman", {.headerSize = 64, .width = 8, .height = 1, .bits = 1, .compression = 3, .pixels = row}},
        {"RLE top-down", {.width = 4, .height = -1, .bits = 8, .compression = 1, .pixels = {0, 1}}},
        {"RLE8 at 4 bits", {.width = 4, .height = 1, .bits = 4, .compression = 1, .pixels = {0, 1}}},
        {"zero masks", {.width = 1, .height = 1, .bits = 32, .compression = 3, .masks = {0, 0, 0}, .pixels = row}},
        {"bit fields at 24", {.width = 4, .height = 1, .bits = 24, .compression = 3, .masks = {1, 2, 4}, .pixels = row}},
        {"cut after one row", {.width = 4, .height = 3, .bits = 24, .pixels = row}},
        {"header 100", {.headerSize = 100, .width = 4, .height = 1, .pixels = row}},
        {"too wide", {.width = 1 << 20, .height = 1, .bits = 1, .pixels = std::vector<std::uint8_t>(1 << 17)}},
        // A few bytes of RLE declaring gigapixels of nothing.
        {"RLE bomb", {.width = 200000, .height = 30000, .bits = 8, .compression = 1, .pixels = {0, 1}}},
    };
    for (const auto& [name, recipe] : cases) {
        int result = 99;
        EXPECT_FALSE(LoadRecipe(recipe, &result)) << name;
        EXPECT_EQ(result, kFileFailed) << name;
    }
    // An offset beyond the file.
    auto bytes = Build({.width = 4, .height = 1, .pixels = row});
    bytes[10] = 0xF0;
    bytes[11] = 0xFF;
    TempFolder dir;
    WriteBytes(dir.Path("far.bmp"), bytes);
    std::unique_ptr<CDibImage> picture;
    EXPECT_EQ(LoadPicture(dir.Path("far.bmp"), kLimits, picture), kFileFailed);
}

// What ImageMagick writes, decoded by ImageMagick itself into a plain
// 24-bit BMP over white, must be what we decode.
TEST(BmpVariants, FilesWrittenByImageMagickMatchItsOwnDecoding) {
    if (!ToolAvailable("convert")) {
        GTEST_SKIP() << "ImageMagick is installed by scripts/install-deps.sh";
    }
    TempFolder dir;
    const std::string source = dir.Path("src.png");
    ASSERT_EQ(RunQuiet("convert -size 37x23 gradient:red-blue -fill green -draw 'rectangle 3,3 10,12' " + source), 0);
    const char* variants[] = {
        "BMP3:%s -type TrueColor",
        "BMP:%s -type TrueColor",
        "BMP:%s -alpha set -channel A -evaluate set 50%% +channel",
        "BMP3:%s -colors 200 -type Palette",
        "BMP3:%s -colors 12 -type Palette",
        "BMP3:%s -colors 2 -type Palette",
        "BMP3:%s -colors 100 -type Palette -compress RLE",
        "BMP3:%s -colors 10 -type Palette -compress RLE",
        "BMP2:%s -colors 100 -type Palette",
        "BMP:%s -define bmp:subtype=RGB565",
        "BMP:%s -define bmp:subtype=RGB555",
    };
    for (const char* variant : variants) {
        const std::string file = dir.Path("v.bmp");
        char args[256];
        std::snprintf(args, sizeof args, variant, file.c_str());
        const std::string options = std::string(args).substr(std::string(args).find(' ') + 1);
        const std::string target = std::string(args).substr(0, std::string(args).find(' '));
        ASSERT_EQ(RunQuiet("convert " + source + " " + options + " " + target), 0) << variant;
        ASSERT_EQ(RunQuiet("convert " + file + " -background white -flatten -type TrueColor BMP3:" +
                           dir.Path("ref.bmp")), 0) << variant;
        std::unique_ptr<CDibImage> ours;
        std::unique_ptr<CDibImage> theirs;
        ASSERT_EQ(LoadPicture(file, kLimits, ours), kFileOk) << variant;
        ASSERT_EQ(LoadPicture(dir.Path("ref.bmp"), kLimits, theirs), kFileOk) << variant;
        ASSERT_EQ(ours->Width(), 37);
        EXPECT_GE(Psnr(*ours, *theirs), 45.0) << variant;
    }
}

} // namespace
