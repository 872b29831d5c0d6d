#include "FormatFixtures.h"

#include "formats/FileResult.h"
#include "formats/PictureSaver.h"
#include "formats/SafeFileWriter.h"
#include "formats/TempFiles.h"
#include "image/CDibImage.h"
#include "support/ImageFixtures.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct stat StatOf(const std::string& path) {
    struct stat info {};
    ::lstat(path.c_str(), &info);
    return info;
}

// A save through a symbolic link (or a chain of them, relative or absolute)
// updates the file the chain names and keeps the links.
TEST(SafeTargets, SavingThroughLinksUpdatesTheRealFile) {
    TempFolder dir;
    auto picture = MakeGradientImage(30, 20);
    ::mkdir(dir.Path("real").c_str(), 0700);
    WriteBytes(dir.Path("real/photo.bmp"), {'o', 'l', 'd'});
    ASSERT_EQ(::symlink("real/photo.bmp", dir.Path("link.bmp").c_str()), 0);
    ASSERT_EQ(::symlink(dir.Path("link.bmp").c_str(), dir.Path("chain.bmp").c_str()), 0);
    for (const char* name : {"link.bmp", "chain.bmp"}) {
        ASSERT_EQ(SavePicture(dir.Path(name), *picture, 80), kFileOk) << name;
        EXPECT_TRUE(S_ISLNK(StatOf(dir.Path(name)).st_mode)) << name;
        EXPECT_EQ(ReadBytes(dir.Path("real/photo.bmp")).size(), 54u + picture->ImageBytes()) << name;
    }
    // A dangling link gets its file.
    ASSERT_EQ(::symlink("real/new.bmp", dir.Path("dangling.bmp").c_str()), 0);
    ASSERT_EQ(SavePicture(dir.Path("dangling.bmp"), *picture, 80), kFileOk);
    EXPECT_TRUE(FileExists(dir.Path("real/new.bmp")));
    EXPECT_EQ(CountTemporaries(dir.Path("")) + CountTemporaries(dir.Path("real")), 0);
    // A loop is an error with the system's reason.
    ASSERT_EQ(::symlink("loop.bmp", dir.Path("loop.bmp").c_str()), 0);
    EXPECT_EQ(SavePicture(dir.Path("loop.bmp"), *picture, 80), kFileFailed);
    EXPECT_EQ(SaveFailureReason(), "Too many levels of symbolic links");
}

// Whatever is not a regular file the user may write is left alone, with a
// reason; so is an existing file that happens to have a temporary's old name.
TEST(SafeTargets, OnlyWritableRegularFilesAreReplaced) {
    TempFolder dir;
    auto picture = MakeGradientImage(30, 20);
    ASSERT_EQ(::mkfifo(dir.Path("pipe.bmp").c_str(), 0600), 0);
    ::mkdir(dir.Path("folder.png").c_str(), 0700);
    ASSERT_EQ(::symlink("/dev/null", dir.Path("device.jpg").c_str()), 0);
    struct Case {
        std::string path;
        const char* reason;
    };
    const Case cases[] = {{dir.Path("pipe.bmp"), "It is not a regular file"},
                          {dir.Path("device.jpg"), "It is not a regular file"},
                          {dir.Path("folder.png"), "Is a directory"},
                          {dir.Path("missing/x.bmp"), "No such file or directory"}};
    for (const Case& c : cases) {
        const auto before = StatOf(c.path);
        EXPECT_EQ(SavePicture(c.path, *picture, 80), kFileFailed) << c.path;
        EXPECT_EQ(SaveFailureReason(), c.reason) << c.path;
        EXPECT_EQ(StatOf(c.path).st_mode, before.st_mode) << c.path;
        EXPECT_EQ(StatOf(c.path).st_ino, before.st_ino) << c.path;
    }
    EXPECT_TRUE(S_ISCHR(StatOf("/dev/null").st_mode));

    WriteBytes(dir.Path("ro.jpg"), {'o', 'l', 'd'});
    ASSERT_EQ(::chmod(dir.Path("ro.jpg").c_str(), 0444), 0);
    EXPECT_EQ(SavePicture(dir.Path("ro.jpg"), *picture, 80), kFileFailed);
    EXPECT_EQ(SaveFailureReason(), "Permission denied");
    EXPECT_EQ(ReadBytes(dir.Path("ro.jpg")), (std::vector<std::uint8_t>{'o', 'l', 'd'}));

    // The old fixed temporary name is just another file now.
    WriteBytes(dir.Path("t.gif.xxx"), {'m', 'i', 'n', 'e'});
    ASSERT_EQ(SavePicture(dir.Path("t.gif"), *picture, 80), kFileOk);
    EXPECT_EQ(ReadBytes(dir.Path("t.gif.xxx")), (std::vector<std::uint8_t>{'m', 'i', 'n', 'e'}));

    SafeFileWriter::FailWritesAfter(100);
    EXPECT_EQ(SavePicture(dir.Path("t.gif"), *picture, 80), kFileFailed);
    SafeFileWriter::FailWritesAfter(-1);
    EXPECT_EQ(SaveFailureMessage(), "Unable to save this image file !\nNo space left on device");
    EXPECT_EQ(CountTemporaries(dir.Path("")), 0);
}

TEST(SafeTargets, LongNamesPermissionsAndGroupSurvive) {
    TempFolder dir;
    auto picture = MakeGradientImage(30, 20);
    const std::string longName = dir.Path(std::string(251, 'n') + ".png"); // 255 bytes
    ASSERT_EQ(SavePicture(longName, *picture, 80), kFileOk);
    ASSERT_EQ(::chmod(longName.c_str(), 0640), 0);
    const bool root = ::geteuid() == 0;
    if (root) {
        ASSERT_EQ(::chown(longName.c_str(), static_cast<uid_t>(-1), 4321), 0);
    }
    ASSERT_EQ(SavePicture(longName, *picture, 80), kFileOk);
    EXPECT_EQ(StatOf(longName).st_mode & 07777, 0640u);
    if (root) {
        EXPECT_EQ(StatOf(longName).st_gid, 4321u);
    }
}

// Temporaries of a process that is gone are removed by the next save to
// their folder; those of a running process are not.
TEST(SafeTargets, TemporariesOfKilledSavesAreCleanedUp) {
    TempFolder dir;
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(0);
    }
    ASSERT_GT(child, 0);
    ::waitpid(child, nullptr, 0);
    const std::string stale = temp_files::NameFor(dir.Path(""), 7);
    const std::string gone = dir.Path(".tamrick-" + std::to_string(child) + "-3.tmp");
    WriteBytes(gone, {1});
    WriteBytes(stale, {2}); // ours: this process still runs
    WriteBytes(dir.Path(".tamrick-notes.tmp"), {3});
    auto picture = MakeGradientImage(4, 4);
    ASSERT_EQ(SavePicture(dir.Path("x.bmp"), *picture, 80), kFileOk);
    EXPECT_FALSE(FileExists(gone));
    EXPECT_TRUE(FileExists(stale));
    EXPECT_TRUE(FileExists(dir.Path(".tamrick-notes.tmp")));
    long pid = 0;
    EXPECT_TRUE(temp_files::Parse(".tamrick-42-0.tmp", pid));
    EXPECT_EQ(pid, 42);
    for (const char* name : {".tamrick-42.tmp", ".tamrick--0.tmp", ".tamrick-4x-0.tmp", "tamrick-42-0.tmp"}) {
        EXPECT_FALSE(temp_files::Parse(name, pid)) << name;
    }
}

} // namespace
