#include "FormatFixtures.h"

#include "formats/FileResult.h"
#include "formats/PictureLoader.h"
#include "formats/PictureSaver.h"
#include "image/CDibImage.h"
#include "support/ImageFixtures.h"

#include <QImageReader>

#include <gtest/gtest.h>

#include <chrono>

namespace {

constexpr LoadLimitSize kLimits{1920, 2560};

bool QtReads(const char* format) {
    return QImageReader::supportedImageFormats().contains(format);
}

// Files made by ImageMagick in the formats Qt reads, against ImageMagick's
// own decoding laid over white.
TEST(PlatformFormats, CommonVariantsMatchAnIndependentDecoder) {
    if (!ToolAvailable("convert")) {
        GTEST_SKIP() << "ImageMagick is installed by scripts/install-deps.sh";
    }
    TempFolder dir;
    const std::string source = dir.Path("src.png");
    ASSERT_EQ(RunQuiet("convert -size 41x29 gradient:orange-navy -fill green -draw 'circle 20,14 20,4' " + source),
              0);
    struct Variant {
        const char* qtFormat;
        const char* options;
        const char* file;
    };
    const Variant variants[] = {
        {"png", "-colors 16 -type Palette", "PNG8:p.png"},
        {"png", "-colorspace Gray", "PNG:g.png"},
        {"png", "-depth 16", "PNG48:d.png"},
        {"png", "-interlace PNG", "PNG:i.png"},
        {"png", "-alpha set -channel A -fx 'i/w' +channel", "PNG32:a.png"},
        {"tiff", "", "TIFF:t.tif"},
        {"webp", "-define webp:lossless=true", "WEBP:w.webp"},
        {"gif", "-colors 64", "GIF:c.gif"},
    };
    const std::vector<std::string> openable = ReadableExtensions();
    for (const Variant& v : variants) {
        if (!QtReads(v.qtFormat)) {
            continue; // the plugin is not installed
        }
        // The Open dialog lists every format that loads.
        EXPECT_NE(std::find(openable.begin(), openable.end(), v.qtFormat), openable.end()) << v.qtFormat;
        const std::string target = v.file;
        const std::string file = dir.Path(target.substr(target.find(':') + 1));
        ASSERT_EQ(RunQuiet("convert " + source + " " + v.options + " " + target.substr(0, target.find(':') + 1) + file),
                  0) << v.file;
        ASSERT_EQ(RunQuiet("convert " + file + " -background white -flatten -type TrueColor BMP3:" +
                           dir.Path("ref.bmp")), 0) << v.file;
        std::unique_ptr<CDibImage> ours;
        std::unique_ptr<CDibImage> theirs;
        ASSERT_EQ(LoadPicture(file, kLimits, ours), kFileOk) << v.file;
        ASSERT_EQ(LoadPicture(dir.Path("ref.bmp"), kLimits, theirs), kFileOk);
        ASSERT_EQ(ours->Width(), 41) << v.file;
        EXPECT_GE(Psnr(*ours, *theirs), 38.0) << v.file;
    }
}

// Whenever the picture is smaller than its file, the file's own size is
// reported, so the document is marked reduced, whichever reader ran.
TEST(PlatformFormats, EveryLoaderReportsTheFilesOwnSize) {
    TempFolder dir;
    auto picture = MakeGradientImage(120, 90);
    // A BMP may be twice the limits; Qt's formats are decoded whole up to
    // twice the limits and shrunk into them.
    const std::pair<const char*, LoadLimitSize> cases[] = {
        {"r.bmp", {40, 30}}, {"r.jpg", {40, 30}}, {"r.png", {100, 80}}, {"r.gif", {100, 80}}};
    for (const auto& [name, limits] : cases) {
        ASSERT_EQ(SavePicture(dir.Path(name), *picture, 90), kFileOk) << name;
        std::unique_ptr<CDibImage> loaded;
        PictureFileInfo info;
        ASSERT_EQ(LoadPicture(dir.Path(name), limits, loaded, &info), kFileOk) << name;
        EXPECT_EQ(info.fileWidth, 120) << name;
        EXPECT_EQ(info.fileHeight, 90) << name;
        EXPECT_LT(loaded->Width(), 120) << name;
    }
    // Through Qt, a file beyond twice the limits is refused, not decoded.
    std::unique_ptr<CDibImage> loaded;
    EXPECT_EQ(LoadPicture(dir.Path("r.png"), LoadLimitSize{20, 20}, loaded), kFileFailed);
}

// A PNG and a GIF whose headers declare gigapixels in a few bytes.
TEST(PlatformFormats, TinyFilesDeclaringHugePicturesAreRefusedQuickly) {
    TempFolder dir;
    auto picture = MakeGradientImage(8, 8);
    ASSERT_EQ(SavePicture(dir.Path("p.png"), *picture, 90), kFileOk);
    auto png = ReadBytes(dir.Path("p.png"));
    // IHDR width and height (big-endian at bytes 16 and 20); the CRC is wrong,
    // which readers may or may not check, so both ways must fail fast.
    for (std::size_t i : {16u, 20u}) {
        png[i] = 0;
        png[i + 1] = 0;
        png[i + 2] = 0x75;
        png[i + 3] = 0x30; // 30000
    }
    WriteBytes(dir.Path("bomb.png"), png);
    ASSERT_EQ(SavePicture(dir.Path("g.gif"), *picture, 90), kFileOk);
    auto gif = ReadBytes(dir.Path("g.gif"));
    gif[6] = gif[7] = gif[8] = gif[9] = 0xFF; // a 65535 x 65535 screen
    WriteBytes(dir.Path("bomb.gif"), gif);
    for (const char* name : {"bomb.png", "bomb.gif"}) {
        const auto start = std::chrono::steady_clock::now();
        std::unique_ptr<CDibImage> loaded;
        EXPECT_EQ(LoadPicture(dir.Path(name), LoadLimitSize{30000, 30000}, loaded), kFileFailed) << name;
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1)) << name;
    }
}

} // namespace
