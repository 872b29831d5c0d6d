#include "FormatFixtures.h"

#include "formats/CDocumentFiles.h"
#include "formats/ImageFileType.h"
#include "formats/PictureLoader.h"
#include "formats/PictureSaver.h"
#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/DibHelpers.h"
#include "platform/HeapBlock.h"
#include "platform/ScreenMetrics.h"
#include "platform/StringTable.h"
#include "support/ImageFixtures.h"
#include "support/ScriptedPresenter.h"

#include <gtest/gtest.h>

namespace {

using platform::MessageAnswer;
using platform::MessageIcon;

class DocumentFilesTest : public ::testing::Test {
protected:
    void SetUp() override {
        files.SetSaveDialog([this](const std::string& initial, const char* filters) {
            dialogCalls.push_back(initial + "|" + filters);
            return dialogAnswer;
        });
        files.SetViewReset([this] { ++viewResets; });
        files.SetJpegQuality([] { return 80; });
    }
    void TearDown() override { platform::HeapBlock::FailNextAllocations(0); }

    std::string SaveBmp(const std::string& name, int width = 20, int height = 10) {
        const std::string path = dir.Path(name);
        auto picture = MakeGradientImage(width, height);
        EXPECT_EQ(SavePicture(path, *picture, 80), 1);
        return path;
    }
    void Modify() {
        doc.GetPicture()->SetPixel(0, 0, 0x123456);
        doc.SetModifiedFlag(true);
    }

    TempFolder dir;
    ScriptedPresenter presenter;
    CBriselDoc doc;
    CUndoHistory undo;
    CDocumentFiles files{doc, undo, LoadLimitSize{10, 10}};
    std::optional<std::string> dialogAnswer;
    std::vector<std::string> dialogCalls;
    int viewResets = 0;
};

TEST_F(DocumentFilesTest, OpeningAFileAndTheReducedNotice) {
    const std::string path = SaveBmp("small.bmp", 16, 12);
    ASSERT_EQ(files.OnOpenDocument(path), 1);
    EXPECT_EQ(doc.GetPicture()->Width(), 16);
    EXPECT_EQ(doc.PathName(), path);
    EXPECT_EQ(doc.Title(), "small.bmp");
    EXPECT_FALSE(doc.IsReduced());
    EXPECT_FALSE(doc.IsModified());
    EXPECT_FALSE(files.ShowReducedNotice());

    // Larger than twice the 10 x 10 limits: loaded smaller and marked
    // reduced; the notice is shown once.
    const std::string big = SaveBmp("big.bmp", 40, 20);
    ASSERT_EQ(files.OnOpenDocument(big), 1);
    EXPECT_EQ(doc.GetPicture()->Width(), 20);
    EXPECT_EQ(doc.GetPicture()->Height(), 10);
    EXPECT_TRUE(doc.IsReduced());
    EXPECT_TRUE(files.ShowReducedNotice());
    EXPECT_FALSE(files.ShowReducedNotice());
    EXPECT_EQ(presenter.ShownIds(), std::vector<int>{platform::IDS_IMAGE_TOO_LARGE});
    EXPECT_EQ(presenter.Shown()[0].icon, MessageIcon::Exclamation);

    // A reduced picture: Save goes through the dialog, Revert is off, and the
    // question names the untitled document.
    Modify();
    EXPECT_FALSE(files.CanRevert());
    EXPECT_FALSE(files.Save()); // dialog cancelled
    EXPECT_EQ(dialogCalls.size(), 1u);
    EXPECT_EQ(dialogCalls[0], big + "|" + CDocumentFiles::kSaveFilters);
    EXPECT_EQ(ReadBytes(big).size(), 54u + 3u * 40u * 20u); // untouched
    presenter.Answer(MessageAnswer::Cancel);
    EXPECT_FALSE(files.SaveModified());
    EXPECT_EQ(presenter.Shown().back().text, "Save changes to Untitled?");
    EXPECT_EQ(presenter.Shown().back().buttons, platform::MessageButtons::YesNoCancel);
}

TEST_F(DocumentFilesTest, OpenFailures) {
    // A missing file: message with the path, stop icon, nothing changes.
    doc.SetPicture(MakeGradientImage(5, 5));
    doc.SetMask(CreateMask(5, 5, true));
    EXPECT_EQ(files.OnOpenDocument(dir.Path("absent.bmp")), 0);
    ASSERT_EQ(presenter.Shown().size(), 1u);
    EXPECT_EQ(presenter.Shown()[0].text, "Unable to open this image file ! - " + dir.Path("absent.bmp"));
    EXPECT_EQ(presenter.Shown()[0].icon, MessageIcon::Stop);
    EXPECT_EQ(doc.GetPicture()->Width(), 5);

    // A broken file: message 85, and the document stays exactly as it was:
    // picture, name, modified flag and undo history.
    WriteBytes(dir.Path("broken.jpg"), {0xFF, 0xD8, 0xFF});
    doc.SetPathName("/somewhere/before.bmp");
    doc.SetTitle("before.bmp");
    Modify();
    ASSERT_EQ(undo.Record(doc, 1), 1);
    const CDibImage* before = doc.GetPicture();
    EXPECT_EQ(files.OnOpenDocument(dir.Path("broken.jpg")), 0);
    EXPECT_EQ(presenter.ShownIds().back(), platform::IDS_UNABLE_TO_OPEN);
    EXPECT_EQ(presenter.Shown().back().icon, MessageIcon::Exclamation);
    EXPECT_EQ(doc.GetPicture(), before);
    EXPECT_FALSE(doc.IsReduced());
    EXPECT_TRUE(doc.IsModified());
    EXPECT_EQ(doc.Title(), "before.bmp");
    EXPECT_EQ(doc.PathName(), "/somewhere/before.bmp");
    EXPECT_TRUE(undo.CanUndo(&doc));
    EXPECT_EQ(viewResets, 0);

    // Out of memory while loading: the memory message instead.
    const std::string path = SaveBmp("fine.bmp");
    platform::HeapBlock::FailNextAllocations(50, 1);
    EXPECT_EQ(files.OnOpenDocument(path), 0);
    platform::HeapBlock::FailNextAllocations(0);
    EXPECT_EQ(presenter.ShownIds().back(), platform::IDS_MEMORY_NOT_ENOUGH);
}

TEST_F(DocumentFilesTest, SaveUsesThePathUnlessItIsAGif) {
    const std::string path = SaveBmp("pic.bmp");
    ASSERT_EQ(files.OnOpenDocument(path), 1);
    EXPECT_FALSE(files.CanSave());
    Modify();
    EXPECT_TRUE(files.CanSave());
    EXPECT_TRUE(files.CanRevert());
    ASSERT_TRUE(files.Save());
    EXPECT_TRUE(dialogCalls.empty());
    EXPECT_FALSE(doc.IsModified());
    EXPECT_EQ(GetImageFileType(path), kFileTypeBmp);

    // Save As adopts the new path and title; the extension picks GIF.
    dialogAnswer = dir.Path("copy.gif");
    ASSERT_TRUE(files.SaveAs());
    EXPECT_EQ(doc.PathName(), dir.Path("copy.gif"));
    EXPECT_EQ(doc.Title(), "copy.gif");
    EXPECT_EQ(GetImageFileType(dir.Path("copy.gif")), kFileTypeGif);

    // The path now holds a GIF: Save asks for a name, and the question
    // names the GIF file as any other.
    Modify();
    dialogAnswer = std::nullopt;
    EXPECT_FALSE(files.Save());
    EXPECT_EQ(dialogCalls.size(), 2u);
    presenter.Answer(MessageAnswer::No);
    EXPECT_TRUE(files.SaveModified());
    EXPECT_EQ(presenter.Shown().back().text, "Save changes to " + dir.Path("copy.gif") + "?");
    EXPECT_EQ(presenter.Shown().back().icon, MessageIcon::Exclamation);

    // Yes saves through the dialog; a cancelled dialog stops the pending
    // command, a completed one lets it go on.
    presenter.Answer(MessageAnswer::Yes);
    EXPECT_FALSE(files.SaveModified());
    EXPECT_TRUE(doc.IsModified());
    dialogAnswer = dir.Path("again.bmp");
    presenter.Answer(MessageAnswer::Yes);
    EXPECT_TRUE(files.SaveModified());
    EXPECT_EQ(dialogCalls.size(), 4u);
    EXPECT_EQ(GetImageFileType(dir.Path("again.bmp")), kFileTypeBmp);
    EXPECT_FALSE(doc.IsModified());
}

TEST_F(DocumentFilesTest, SaveModifiedAnswers) {
    const std::string path = SaveBmp("pic.bmp");
    ASSERT_EQ(files.OnOpenDocument(path), 1);
    EXPECT_TRUE(files.SaveModified()); // not modified: no question
    EXPECT_TRUE(presenter.Shown().empty());

    Modify();
    presenter.Answer(MessageAnswer::Yes);
    EXPECT_TRUE(files.SaveModified());
    EXPECT_EQ(presenter.Shown().back().text, "Save changes to " + path + "?");
    EXPECT_FALSE(doc.IsModified());
    std::unique_ptr<CDibImage> saved;
    ASSERT_EQ(LoadPicture(path, LoadLimitSize{1920, 2560}, saved), 1);
    EXPECT_EQ(saved->GetPixel(0, 0), 0x123456u);

    // Never saved: the title names it, Yes goes through the dialog and the
    // pending command goes on after the save.
    CBriselDoc fresh;
    CDocumentFiles freshFiles(fresh, undo, LoadLimitSize{1920, 2560});
    freshFiles.SetSaveDialog([this](const std::string&, const char*) { return dir.Path("new.jpg"); });
    fresh.SetPicture(MakeGradientImage(4, 4));
    fresh.SetMask(CreateMask(4, 4, true));
    fresh.SetTitle("Picture");
    fresh.SetModifiedFlag(true);
    presenter.Answer(MessageAnswer::Yes);
    EXPECT_TRUE(freshFiles.SaveModified());
    EXPECT_EQ(presenter.Shown().back().text, "Save changes to Picture?");
    EXPECT_EQ(GetImageFileType(dir.Path("new.jpg")), kFileTypeJpeg);
    EXPECT_FALSE(fresh.IsModified());
    EXPECT_EQ(fresh.PathName(), dir.Path("new.jpg"));
}

TEST_F(DocumentFilesTest, PutFloatingQuestionBeforeSaving) {
    const std::string path = SaveBmp("pic.bmp");
    ASSERT_EQ(files.OnOpenDocument(path), 1);
    const auto before = ReadBytes(path);
    ASSERT_EQ(doc.CreateFloating(0, 0, 3, 3, false), 1);
    doc.GetFloatImage()->Clear(0x00FF00);
    doc.SetFloatPosition(2, 2);
    doc.SetModifiedFlag(true);

    presenter.Answer(MessageAnswer::Cancel);
    EXPECT_FALSE(files.Save());
    EXPECT_EQ(presenter.ShownIds().back(), platform::IDS_PUT_FLOATING_BEFORE_SAVE);
    EXPECT_EQ(presenter.Shown().back().icon, MessageIcon::Question);
    EXPECT_EQ(ReadBytes(path), before);
    EXPECT_TRUE(doc.IsModified());

    presenter.Answer(MessageAnswer::No);
    ASSERT_TRUE(files.Save());
    std::unique_ptr<CDibImage> saved;
    ASSERT_EQ(LoadPicture(path, LoadLimitSize{1920, 2560}, saved), 1);
    EXPECT_NE(saved->GetPixel(2, 2), 0x00FF00u);

    doc.SetModifiedFlag(true);
    presenter.Answer(MessageAnswer::Yes);
    ASSERT_TRUE(files.Save());
    ASSERT_EQ(LoadPicture(path, LoadLimitSize{1920, 2560}, saved), 1);
    EXPECT_EQ(saved->GetPixel(2, 2), 0x00FF00u);
    EXPECT_NE(doc.GetFloatImage(), nullptr); // the selection stays
}

TEST_F(DocumentFilesTest, SaveFailuresKeepTheDocumentModified) {
    const std::string path = SaveBmp("pic.bmp");
    ASSERT_EQ(files.OnOpenDocument(path), 1);
    Modify();
    platform::HeapBlock::FailNextAllocations(1, 1); // the packed copy
    EXPECT_FALSE(files.Save());
    platform::HeapBlock::FailNextAllocations(0);
    EXPECT_EQ(presenter.ShownIds().back(), platform::IDS_MEMORY_NOT_ENOUGH);
    EXPECT_TRUE(doc.IsModified());

    // A file error says why, in the system's words.
    dialogAnswer = dir.Path("missing-folder/x.bmp");
    const auto shown = presenter.Shown().size();
    EXPECT_FALSE(files.SaveAs());
    ASSERT_EQ(presenter.Shown().size(), shown + 1);
    EXPECT_EQ(presenter.Shown().back().text, "Unable to save this image file !\nNo such file or directory");
    EXPECT_EQ(doc.PathName(), path);

    // A name of a type Tamrick does not write is refused before anything is
    // asked or written, with the list of the types it does write.
    dialogAnswer = dir.Path("x.tif");
    EXPECT_FALSE(files.SaveAs());
    EXPECT_EQ(presenter.Shown().back().text,
              "Tamrick cannot save this type of file. Please name it with one of these extensions: .bmp, .gif, "
              ".jpg, .jpeg, .png");
    EXPECT_FALSE(FileExists(dir.Path("x.tif")));
    EXPECT_TRUE(doc.IsModified());
}

TEST_F(DocumentFilesTest, RevertReloadsAndForgetsTheSelectionAndUndo) {
    const std::string path = SaveBmp("pic.bmp");
    ASSERT_EQ(files.OnOpenDocument(path), 1);
    EXPECT_FALSE(files.CanRevert()); // not modified
    ASSERT_EQ(undo.Record(doc, 1), 1);
    Modify();
    ASSERT_EQ(doc.CreateFloating(0, 0, 2, 2, false), 1);
    doc.SetFloatPosition(1, 1);
    const int resets = viewResets;
    // Revert asks first; No keeps the changes.
    presenter.Answer(MessageAnswer::No);
    EXPECT_EQ(files.Revert(), 0);
    EXPECT_EQ(presenter.ShownIds().back(), platform::IDS_REVERT_DISCARDS_CHANGES);
    EXPECT_EQ(presenter.Shown().back().buttons, platform::MessageButtons::YesNo);
    EXPECT_TRUE(doc.IsModified());
    EXPECT_NE(doc.GetFloatImage(), nullptr);
    presenter.Answer(MessageAnswer::Yes);
    ASSERT_EQ(files.Revert(), 1);
    EXPECT_EQ(doc.GetFloatImage(), nullptr);
    EXPECT_EQ(doc.FloatX(), 0);
    EXPECT_EQ(undo.Kind(), 0);
    EXPECT_FALSE(doc.IsModified());
    EXPECT_EQ(viewResets, resets + 1);
    auto original = MakeGradientImage(20, 10);
    EXPECT_TRUE(SamePixels(*original, *doc.GetPicture()));

    // The file went bad in the meantime: message 85, the picture stays.
    Modify();
    WriteBytes(path, {'B', 'M', 1});
    presenter.Answer(MessageAnswer::Yes);
    EXPECT_EQ(files.Revert(), 0);
    EXPECT_EQ(presenter.ShownIds().back(), platform::IDS_UNABLE_TO_OPEN);
    EXPECT_EQ(doc.GetPicture()->GetPixel(0, 0), 0x123456u);
}

} // namespace
