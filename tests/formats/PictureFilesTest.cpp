#include "FormatFixtures.h"

#include "formats/FileResult.h"
#include "formats/ImageFileType.h"
#include "formats/PictureLoader.h"
#include "formats/PictureSaver.h"
#include "formats/SafeFileWriter.h"
#include "image/CDibImage.h"
#include "platform/HeapBlock.h"
#include "platform/Settings.h"
#include "support/ImageFixtures.h"

#include <QImage>
#include <gtest/gtest.h>

#include <sys/mount.h>
#include <sys/stat.h>

namespace {

constexpr LoadLimitSize kLimits{1920, 2560};

int Load(const std::string& path, std::unique_ptr<CDibImage>& picture) {
    return LoadPicture(path, kLimits, picture);
}

TEST(PictureFiles, ReadingGoesBySignatureAndWritingByExtension) {
    TempFolder dir;
    auto picture = MakeGradientImage(20, 10);
    // A BMP file named .JPG is read as BMP, and saved under that name as JPEG.
    ASSERT_EQ(SavePicture(dir.Path("x.bmp"), *picture, 80), kFileOk);
    ASSERT_EQ(std::rename(dir.Path("x.bmp").c_str(), dir.Path("photo.JPG").c_str()), 0);
    EXPECT_EQ(GetImageFileType(dir.Path("photo.JPG")), kFileTypeBmp);
    std::unique_ptr<CDibImage> loaded;
    ASSERT_EQ(Load(dir.Path("photo.JPG"), loaded), kFileOk);
    EXPECT_TRUE(SamePixels(*picture, *loaded));
    ASSERT_EQ(SavePicture(dir.Path("photo.JPG"), *loaded, 80), kFileOk);
    EXPECT_EQ(GetImageFileType(dir.Path("photo.JPG")), kFileTypeJpeg);

    struct Case {
        const char* name;
        std::uint8_t first;
        std::uint8_t second;
    };
    const Case cases[] = {{"a.jpeg", 0xFF, 0xD8}, {"b.Gif", 'G', 'I'}, {"c.BMP", 'B', 'M'}, {"d.png", 0x89, 'P'}};
    for (const Case& c : cases) {
        ASSERT_EQ(SavePicture(dir.Path(c.name), *picture, 80), kFileOk) << c.name;
        const auto bytes = ReadBytes(dir.Path(c.name));
        ASSERT_GE(bytes.size(), 2u);
        EXPECT_EQ(bytes[0], c.first) << c.name;
        EXPECT_EQ(bytes[1], c.second) << c.name;
        std::unique_ptr<CDibImage> back;
        EXPECT_EQ(Load(dir.Path(c.name), back), kFileOk) << c.name;
    }
    // Other names write nothing and say which types Tamrick writes.
    for (const char* name : {"e.tif", "f", "g.xyz", "dot.jpg/h"}) {
        EXPECT_EQ(SavePicture(dir.Path(name), *picture, 80), kFileFailed) << name;
        EXPECT_FALSE(FileExists(dir.Path(name))) << name;
        EXPECT_NE(SaveFailureReason().find(".bmp, .gif, .jpg, .jpeg, .png"), std::string::npos) << name;
    }
    // PNG is lossless and read through Qt.
    std::unique_ptr<CDibImage> png;
    ASSERT_EQ(Load(dir.Path("d.png"), png), kFileOk);
    EXPECT_TRUE(SamePixels(*picture, *png));
}

TEST(PictureFiles, TransparentPixelsAreLaidOverWhite) {
    TempFolder dir;
    QImage source(3, 1, QImage::Format_ARGB32);
    source.setPixel(0, 0, qRgba(255, 0, 0, 0));
    source.setPixel(1, 0, qRgba(255, 0, 0, 128));
    source.setPixel(2, 0, qRgba(10, 20, 30, 255));
    ASSERT_TRUE(source.save(QString::fromStdString(dir.Path("alpha.png"))));
    std::unique_ptr<CDibImage> loaded;
    ASSERT_EQ(Load(dir.Path("alpha.png"), loaded), kFileOk);
    EXPECT_EQ(loaded->GetPixel(0, 0), 0xFFFFFFu);
    const ColorWord half = loaded->GetPixel(1, 0);
    EXPECT_EQ(RedOf(half), 255);
    EXPECT_NEAR(GreenOf(half), 127, 1);
    EXPECT_EQ(loaded->GetPixel(2, 0), MakeColorWord(10, 20, 30));
}

TEST(PictureFiles, OtherFormatsGoThroughQtsReaders) {
    if (!ToolAvailable("convert")) {
        GTEST_SKIP() << "imagemagick not installed";
    }
    TempFolder dir;
    for (const char* name : {"red.tif", "red.webp"}) {
        ASSERT_EQ(RunQuiet("convert -size 30x20 xc:#FF0000 -define webp:lossless=true " + dir.Path(name)), 0)
            << name;
        std::unique_ptr<CDibImage> picture;
        ASSERT_EQ(Load(dir.Path(name), picture), kFileOk) << name;
        EXPECT_EQ(picture->Width(), 30) << name;
        EXPECT_EQ(picture->GetPixel(29, 19), 0x0000FFu) << name;
    }
}

TEST(PictureFiles, UnreadableFilesFailWithoutAPicture) {
    TempFolder dir;
    WriteBytes(dir.Path("empty.png"), {});
    WriteBytes(dir.Path("noise.gif"), {'G', 'I', 'F', '8', '9', 'a', 1, 2, 3, 4, 5, 6, 7});
    WriteBytes(dir.Path("png.png"),
               {0x89, 'P', 'N', 'G', 13, 10, 26, 10, 0, 0, 0, 13, 'I', 'H', 'D', 'R', 0xFF});
    WriteBytes(dir.Path("text.txt"), {'h', 'e', 'l', 'l', 'o'});
    // Found by the loader fuzzer: a GIF whose screen is 63748 pixels wide but
    // whose image is 2189 x 2048; Qt decodes it at the screen's width.
    WriteBytes(dir.Path("wide.gif"),
               {0x47, 0x49, 0x46, 0x38, 0x39, 0x61, 0x04, 0xf9, 0x00, 0x00, 0x00, 0x00, 0x00, 0x2c,
                0x00, 0x00, 0x00, 0x00, 0x8d, 0x08, 0x00, 0x08, 0x00, 0x08, 0x00, 0x08, 0x42, 0xf2,
                0xff, 0xb6, 0x00, 0x20, 0x00, 0x24, 0x00, 0x00, 0x70, 0x62, 0x6d, 0x6d, 0x6d, 0x00,
                0x92, 0x49, 0x00, 0x08, 0x00, 0x00, 0x03, 0x62, 0x97, 0x02, 0x00, 0x3b});
    // Also from the fuzzer: a 12296 x 16904 screen, which Qt would decode whole.
    WriteBytes(dir.Path("huge.gif"),
               {0x47, 0x49, 0x46, 0x38, 0x39, 0x61, 0x08, 0x30, 0x08, 0x42, 0xf2, 0x00, 0x00, 0xff,
                0x00, 0x00, 0x29, 0x6d, 0x00, 0x92, 0x49, 0x00, 0x3b, 0x24, 0x00, 0xdb, 0x00, 0xf7,
                0xfe, 0x21, 0xf9, 0x04, 0x00, 0x00, 0x00, 0x00, 0x00, 0x2c, 0x00, 0x00, 0x00, 0xe3,
                0x8d, 0x08, 0x00, 0x00, 0x00, 0x08, 0x03, 0x62, 0x97, 0x02, 0x00, 0x3b});
    ::mkdir(dir.Path("folder.png").c_str(), 0700);
    for (const char* name : {"empty.png", "noise.gif", "png.png", "text.txt", "folder.png", "absent.png",
                             "wide.gif", "huge.gif"}) {
        std::unique_ptr<CDibImage> picture;
        EXPECT_EQ(Load(dir.Path(name), picture), kFileFailed) << name;
        EXPECT_FALSE(picture) << name;
    }
    EXPECT_EQ(GetImageFileType(dir.Path("empty.png")), kFileTypeUnknown);
    EXPECT_EQ(GetImageFileType(dir.Path("folder.png")), kFileTypeUnknown);
}

// Saves in every format over an existing file and expects each to fail
// leaving the old bytes and no temporary file.
void ExpectEverySaveFailsSafely(const TempFolder& dir, const std::string& stem, const CDibImage& picture) {
    for (const char* extension : {".bmp", ".gif", ".jpg", ".png"}) {
        const std::string path = dir.Path(stem + extension);
        const auto before = ReadBytes(path);
        EXPECT_EQ(SavePicture(path, picture, 80), kFileFailed) << extension;
        EXPECT_EQ(ReadBytes(path), before) << extension;
        EXPECT_EQ(CountTemporaries(dir.Path("")), 0) << extension;
    }
}

void WriteOldFiles(const TempFolder& dir, const std::string& stem) {
    for (const char* extension : {".bmp", ".gif", ".jpg", ".png"}) {
        WriteBytes(dir.Path(stem + extension), {'o', 'l', 'd'});
    }
}

TEST(SafeSaving, AFailedWriteKeepsTheOldFile) {
    TempFolder dir;
    auto picture = MakeGradientImage(300, 200);
    WriteOldFiles(dir, "old");
    for (long long budget : {0LL, 10LL, 5000LL}) {
        SafeFileWriter::FailWritesAfter(budget);
        ExpectEverySaveFailsSafely(dir, "old", *picture);
    }
    SafeFileWriter::FailWritesAfter(-1);

    // A folder where the file should go stays a folder.
    ASSERT_EQ(::mkdir(dir.Path("taken.bmp").c_str(), 0700), 0);
    EXPECT_EQ(SavePicture(dir.Path("taken.bmp"), *picture, 80), kFileFailed);
    EXPECT_EQ(CountTemporaries(dir.Path("")), 0);
    // A folder that does not exist.
    EXPECT_EQ(SavePicture(dir.Path("nowhere/x.bmp"), *picture, 80), kFileFailed);

    // And a successful save replaces the old file whole.
    ASSERT_EQ(SavePicture(dir.Path("old.bmp"), *picture, 80), kFileOk);
    EXPECT_EQ(ReadBytes(dir.Path("old.bmp")).size(), 54u + picture->ImageBytes());
}

// A small tmpfs mounted for the test; skipped where mounting is not allowed.
class MountedFolder {
public:
    explicit MountedFolder(const std::string& path) : m_path(path) {
        ::mkdir(path.c_str(), 0700);
        m_mounted = ::mount("tmpfs", path.c_str(), "tmpfs", 0, "size=64k") == 0;
    }
    ~MountedFolder() {
        if (m_mounted) {
            ::umount2(m_path.c_str(), MNT_DETACH);
        }
    }
    bool Mounted() const { return m_mounted; }
    bool MakeReadOnly() {
        return ::mount(nullptr, m_path.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }

private:
    std::string m_path;
    bool m_mounted = false;
};

TEST(SafeSaving, AFullDiskAndAReadOnlyFolderKeepTheOldFile) {
    TempFolder dir;
    MountedFolder full(dir.Path("full"));
    MountedFolder readOnly(dir.Path("ro"));
    if (!full.Mounted() || !readOnly.Mounted()) {
        GTEST_SKIP() << "tmpfs cannot be mounted here; the write-failure hook covers these paths";
    }
    // Noise so that no format compresses the picture below the 64 KiB disk.
    auto picture = MakeImage(400, 300);
    std::uint32_t seed = 1;
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 400; ++x) {
            seed = seed * 1664525u + 1013904223u;
            picture->SetPixel(x, y, seed >> 8);
        }
    }
    WriteOldFiles(dir, "full/old");
    ExpectEverySaveFailsSafely(dir, "full/old", *picture);

    WriteOldFiles(dir, "ro/old");
    ASSERT_TRUE(readOnly.MakeReadOnly());
    auto small = MakeImage(2, 2);
    ExpectEverySaveFailsSafely(dir, "ro/old", *small);
}

} // namespace

namespace {

TEST(LoadLimitsTest, TrialAllocationHalvesDownToTheFloor) {
    struct Case {
        int failures;
        int width;
        int height;
    };
    // 1920 x 2560, 960 x 1280, 480 x 640, 240 x 320, then the floor.
    const Case cases[] = {{0, 1920, 2560}, {2, 480, 640}, {3, 240, 320}, {4, 240, 320}, {50, 240, 320}};
    for (const Case& c : cases) {
        platform::HeapBlock::FailNextAllocations(c.failures);
        const LoadLimitSize limits = LoadLimits::Compute(1920, 2560);
        platform::HeapBlock::FailNextAllocations(0);
        EXPECT_EQ(limits.width, c.width) << c.failures;
        EXPECT_EQ(limits.height, c.height) << c.failures;
    }
}

TEST(LoadLimitsTest, TheStartComesFromTheMachineUnlessTheUserSetOne) {
    constexpr std::uint64_t kGiB = 1ull << 30;
    // A picture may take an eighth of the memory, as a square, at most 30000.
    EXPECT_EQ(LoadLimits::MachineStart(24 * kGiB).width, 30000);
    const LoadLimitSize small = LoadLimits::MachineStart(2 * kGiB);
    EXPECT_EQ(small.width, 9459);
    EXPECT_EQ(small.height, 9459);
    EXPECT_EQ(LoadLimits::MachineStart(64ull << 20).width, 1672);
    EXPECT_EQ(LoadLimits::MachineStart(1 << 20).height, 320); // the floor

    LoadLimits::FakePhysicalMemory(2 * kGiB);
    auto start = LoadLimits::StartFromSettings();
    EXPECT_EQ(start.width, 9459);
    platform::Settings::WriteInt("MainSection", "MaxLoadWidth", 8000);
    platform::Settings::WriteInt("MainSection", "MaxLoadHeight", 90000);
    start = LoadLimits::StartFromSettings();
    EXPECT_EQ(start.width, 8000);
    EXPECT_EQ(start.height, 30000);
    platform::Settings::WriteInt("MainSection", "MaxLoadWidth", 100);
    EXPECT_EQ(LoadLimits::StartFromSettings().width, 240);
    LoadLimits::FakePhysicalMemory(0);
    platform::Settings::Remove("MainSection", "MaxLoadWidth");
    platform::Settings::Remove("MainSection", "MaxLoadHeight");
}

} // namespace
