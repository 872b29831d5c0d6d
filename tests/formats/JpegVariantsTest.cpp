#include "FormatFixtures.h"

#include "formats/FileResult.h"
#include "formats/JpegWriter.h"
#include "formats/PictureLoader.h"
#include "formats/PictureSaver.h"
#include "image/CDibImage.h"
#include "support/ImageFixtures.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csetjmp>
#include <cstdio>
#include <jpeglib.h>

namespace {

constexpr LoadLimitSize kLimits{1920, 2560};

struct Encoding {
    J_COLOR_SPACE space = JCS_RGB; // of the samples given
    int components = 3;
    bool progressive = false;
    bool arithmetic = false;
    bool adobe = false; // write Adobe's marker (inverted CMYK)
    J_COLOR_SPACE fileSpace = JCS_UNKNOWN; // the file's own, when not libjpeg's choice
    const std::vector<jpeg_scan_info>* script = nullptr;
};

// Encodes `samples` (rows top first, `components` per pixel) with libjpeg.
std::vector<std::uint8_t> Encode(const std::vector<std::uint8_t>& samples, int width, int height,
                                 const Encoding& encoding) {
    jpeg_compress_struct info{};
    jpeg_error_mgr error{};
    info.err = jpeg_std_error(&error);
    jpeg_create_compress(&info);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &buffer, &size);
    info.image_width = static_cast<JDIMENSION>(width);
    info.image_height = static_cast<JDIMENSION>(height);
    info.input_components = encoding.components;
    info.in_color_space = encoding.space;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, 95, TRUE);
    if (encoding.fileSpace != JCS_UNKNOWN) {
        jpeg_set_colorspace(&info, encoding.fileSpace);
    }
    info.write_Adobe_marker = encoding.adobe ? TRUE : FALSE;
    info.arith_code = encoding.arithmetic ? TRUE : FALSE;
    if (encoding.progressive) {
        jpeg_simple_progression(&info);
    }
    if (encoding.script != nullptr) {
        info.scan_info = encoding.script->data();
        info.num_scans = static_cast<int>(encoding.script->size());
    }
    jpeg_start_compress(&info, TRUE);
    for (int y = 0; y < height; ++y) {
        auto* row = const_cast<JSAMPROW>(samples.data() + static_cast<std::size_t>(y * width * encoding.components));
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    std::vector<std::uint8_t> bytes(buffer, buffer + size);
    jpeg_destroy_compress(&info);
    std::free(buffer);
    return bytes;
}

// An APP1 "Exif" segment holding only the orientation tag, put after SOI.
std::vector<std::uint8_t> WithOrientation(std::vector<std::uint8_t> jpeg, int orientation, bool bigEndian) {
    std::vector<std::uint8_t> tiff = bigEndian ? std::vector<std::uint8_t>{'M', 'M', 0, 42, 0, 0, 0, 8, 0, 1, 0x01,
                                                                            0x12, 0, 3, 0, 0, 0, 1}
                                               : std::vector<std::uint8_t>{'I', 'I', 42, 0, 8, 0, 0, 0, 1, 0, 0x12,
                                                                            0x01, 3, 0, 1, 0, 0, 0};
    const auto value = static_cast<std::uint8_t>(orientation);
    tiff.insert(tiff.end(), bigEndian ? std::initializer_list<std::uint8_t>{0, value, 0, 0}
                                      : std::initializer_list<std::uint8_t>{value, 0, 0, 0});
    tiff.insert(tiff.end(), {0, 0, 0, 0}); // no next IFD
    std::vector<std::uint8_t> segment = {0xFF, 0xE1, 0, 0, 'E', 'x', 'i', 'f', 0, 0};
    segment.insert(segment.end(), tiff.begin(), tiff.end());
    segment[2] = static_cast<std::uint8_t>((segment.size() - 2) >> 8);
    segment[3] = static_cast<std::uint8_t>(segment.size() - 2);
    jpeg.insert(jpeg.begin() + 2, segment.begin(), segment.end());
    return jpeg;
}

// Sets the frame's declared size (the first SOFn marker).
void DeclareSize(std::vector<std::uint8_t>& jpeg, int width, int height) {
    for (std::size_t i = 2; i + 9 < jpeg.size(); ++i) {
        const std::uint8_t m = jpeg[i + 1];
        if (jpeg[i] == 0xFF && (m == 0xC0 || m == 0xC1 || m == 0xC2 || m == 0xC9 || m == 0xCA)) {
            jpeg[i + 5] = static_cast<std::uint8_t>(height >> 8);
            jpeg[i + 6] = static_cast<std::uint8_t>(height);
            jpeg[i + 7] = static_cast<std::uint8_t>(width >> 8);
            jpeg[i + 8] = static_cast<std::uint8_t>(width);
            return;
        }
    }
    FAIL() << "no frame header";
}

// 3 x 2 blocks of 8 x 8 pixels, each its own colour.
const ColorWord kBlocks[2][3] = {{0x0000FF, 0x00FF00, 0xFF0000}, {0x00FFFF, 0xFF00FF, 0x404040}};

std::vector<std::uint8_t> BlockSamples() {
    std::vector<std::uint8_t> samples;
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 24; ++x) {
            const ColorWord c = kBlocks[y / 8][x / 8];
            samples.insert(samples.end(), {static_cast<std::uint8_t>(c), static_cast<std::uint8_t>(c >> 8),
                                           static_cast<std::uint8_t>(c >> 16)});
        }
    }
    return samples;
}

bool Near(ColorWord a, ColorWord b) {
    for (int shift = 0; shift < 24; shift += 8) {
        if (std::abs(static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF)) > 12) {
            return false;
        }
    }
    return true;
}

// Where block (x, y) of the upright picture comes from in the stored 3 x 2 grid.
std::pair<int, int> StoredBlock(int orientation, int x, int y) {
    switch (orientation) {
    case 2: return {2 - x, y};
    case 3: return {2 - x, 1 - y};
    case 4: return {x, 1 - y};
    case 5: return {y, x};
    case 6: return {y, 1 - x};
    case 7: return {2 - y, 1 - x};
    case 8: return {2 - y, x};
    default: return {x, y};
    }
}

TEST(JpegVariants, EveryExifOrientationStandsUprightAndIsSavedWithoutIt) {
    TempFolder dir;
    const auto plain = Encode(BlockSamples(), 24, 16, {});
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const std::string path = dir.Path("o.jpg");
        WriteBytes(path, WithOrientation(plain, orientation, orientation % 2 == 0));
        std::unique_ptr<CDibImage> picture;
        PictureFileInfo info;
        ASSERT_EQ(LoadPicture(path, kLimits, picture, &info), kFileOk) << orientation;
        const bool turned = orientation >= 5;
        ASSERT_EQ(picture->Width(), turned ? 16 : 24) << orientation;
        EXPECT_EQ(info.fileWidth, picture->Width()) << "the file's size is reported upright";
        EXPECT_EQ(info.fileHeight, picture->Height());
        for (int y = 0; y < (turned ? 3 : 2); ++y) {
            for (int x = 0; x < (turned ? 2 : 3); ++x) {
                const auto [sx, sy] = StoredBlock(orientation, x, y);
                EXPECT_TRUE(Near(picture->GetPixel(x * 8 + 4, y * 8 + 4), kBlocks[sy][sx]))
                    << "orientation " << orientation << " block " << x << "," << y;
            }
        }
    }
    // Saved upright without the tag: it loads the same again.
    std::unique_ptr<CDibImage> turned;
    WriteBytes(dir.Path("six.jpg"), WithOrientation(plain, 6, false));
    ASSERT_EQ(LoadPicture(dir.Path("six.jpg"), kLimits, turned), kFileOk);
    ASSERT_EQ(SavePicture(dir.Path("saved.jpg"), *turned, 95), kFileOk);
    std::unique_ptr<CDibImage> again;
    ASSERT_EQ(LoadPicture(dir.Path("saved.jpg"), kLimits, again), kFileOk);
    EXPECT_EQ(again->Width(), 16);
    EXPECT_TRUE(Near(again->GetPixel(4, 4), kBlocks[1][0]));

    // The reduced path fits the upright picture into the limits: 16 x 24
    // into 8 x 12 is the DCT scale 1/2.
    std::unique_ptr<CDibImage> small;
    PictureFileInfo info;
    ASSERT_EQ(LoadPicture(dir.Path("six.jpg"), LoadLimitSize{8, 12}, small, &info), kFileOk);
    EXPECT_EQ(small->Width(), 8);
    EXPECT_EQ(small->Height(), 12);
    EXPECT_EQ(info.fileWidth, 16);
    EXPECT_EQ(info.fileHeight, 24);
}

TEST(JpegVariants, CmykAndYcckLoadAsRgb) {
    TempFolder dir;
    // Ink amounts of (cyan, magenta, yellow, black) and the colour they make.
    struct Ink {
        std::uint8_t c, m, y, k;
        ColorWord expected;
    };
    const Ink inks[] = {{255, 0, 0, 0, 0xFFFF00}, {0, 0, 0, 0, 0xFFFFFF}, {0, 255, 255, 0, 0x0000FF},
                        {0, 0, 0, 255, 0x000000}, {0, 0, 0, 128, 0x7F7F7F}};
    for (const bool adobe : {true, false}) {
        std::vector<std::uint8_t> samples;
        for (int y = 0; y < 8; ++y) {
            for (const Ink& ink : inks) {
                for (int x = 0; x < 8; ++x) {
                    std::uint8_t px[4] = {ink.c, ink.m, ink.y, ink.k};
                    for (std::uint8_t& v : px) {
                        v = adobe ? static_cast<std::uint8_t>(255 - v) : v; // Adobe stores them inverted
                    }
                    samples.insert(samples.end(), px, px + 4);
                }
            }
        }
        for (const J_COLOR_SPACE stored : {JCS_CMYK, JCS_YCCK}) {
            if (!adobe && stored == JCS_YCCK) {
                continue; // YCCK needs the Adobe marker
            }
            const Encoding encoding{.space = JCS_CMYK, .components = 4, .adobe = adobe, .fileSpace = stored};
            WriteBytes(dir.Path("cmyk.jpg"), Encode(samples, 40, 8, encoding));
            std::unique_ptr<CDibImage> picture;
            ASSERT_EQ(LoadPicture(dir.Path("cmyk.jpg"), kLimits, picture), kFileOk);
            for (int i = 0; i < 5; ++i) {
                EXPECT_TRUE(Near(picture->GetPixel(i * 8 + 4, 4), inks[i].expected))
                    << "adobe " << adobe << " ink " << i << " got " << std::hex << picture->GetPixel(i * 8 + 4, 4);
            }
        }
    }
}

// Tiny files that declare huge pictures, and files that repeat scans, are
// refused at once and without the memory a decoder would take for them.
TEST(JpegVariants, DecompressionBombsAreRefusedQuickly) {
    TempFolder dir;
    const std::vector<std::uint8_t> grey(16 * 16, 0x80);
    struct Bomb {
        const char* name;
        Encoding encoding;
        int width;
        int height;
    };
    const Bomb bombs[] = {
        {"progressive 65500", {.space = JCS_GRAYSCALE, .components = 1, .progressive = true, .arithmetic = true},
         65500, 65500},
        {"progressive 30000", {.space = JCS_GRAYSCALE, .components = 1, .progressive = true}, 30000, 30000},
        {"arithmetic", {.space = JCS_GRAYSCALE, .components = 1, .arithmetic = true}, 31488, 49159},
    };
    const LoadLimitSize wide{30000, 30000};
    for (const Bomb& bomb : bombs) {
        auto bytes = Encode(grey, 16, 16, bomb.encoding);
        DeclareSize(bytes, bomb.width, bomb.height);
        WriteBytes(dir.Path("bomb.jpg"), bytes);
        const auto start = std::chrono::steady_clock::now();
        std::unique_ptr<CDibImage> picture;
        EXPECT_EQ(LoadPicture(dir.Path("bomb.jpg"), wide, picture), kFileFailed) << bomb.name;
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1)) << bomb.name;
    }

    // A valid progressive file in 65 scans (each coefficient alone, the DC
    // term refined once) is beyond the scan limit; the usual script loads.
    std::vector<std::uint8_t> smooth(256 * 256);
    for (std::size_t i = 0; i < smooth.size(); ++i) {
        smooth[i] = static_cast<std::uint8_t>((i % 256) ^ (i / 256));
    }
    const Encoding progressive{.space = JCS_GRAYSCALE, .components = 1, .progressive = true};
    WriteBytes(dir.Path("fine.jpg"), Encode(smooth, 256, 256, progressive));
    std::unique_ptr<CDibImage> picture;
    EXPECT_EQ(LoadPicture(dir.Path("fine.jpg"), kLimits, picture), kFileOk);
    std::vector<jpeg_scan_info> script;
    script.push_back({1, {0}, 0, 0, 0, 1});
    for (int k = 1; k < 64; ++k) {
        script.push_back({1, {0}, k, k, 0, 0});
    }
    script.push_back({1, {0}, 0, 0, 1, 0});
    WriteBytes(dir.Path("scans.jpg"), Encode(smooth, 256, 256, {.space = JCS_GRAYSCALE, .components = 1,
                                                                .script = &script}));
    EXPECT_EQ(LoadPicture(dir.Path("scans.jpg"), kLimits, picture), kFileFailed);

    // Eleven scans, within the limit, but together they walk every
    // coefficient of the picture ten times.
    script = {{1, {0}, 0, 0, 0, 0}, {1, {0}, 1, 63, 0, 9}};
    for (int bit = 9; bit > 0; --bit) {
        script.push_back({1, {0}, 1, 63, bit, bit - 1});
    }
    WriteBytes(dir.Path("passes.jpg"), Encode(smooth, 256, 256, {.space = JCS_GRAYSCALE, .components = 1,
                                                                 .script = &script}));
    EXPECT_EQ(LoadPicture(dir.Path("passes.jpg"), kLimits, picture), kFileFailed);
}

} // namespace
