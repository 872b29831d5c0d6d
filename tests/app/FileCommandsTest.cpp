#include "app/AppTestSupport.h"
#include "app/CBriselApp.h"
#include "app/CMainFrame.h"
#include "app/CommandIds.h"
#include "app/CommandRouter.h"
#include "app/ExternalSender.h"
#include "platform/StringTable.h"
#include "support/ScriptedPresenter.h"
#include "view/CBriselView.h"
#include "view/CViewWindow.h"

#include <QAction>
#include <QFileDialog>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using platform::MessageAnswer;

// A small picture file whose pixels are known.
QString WritePicture(const QTemporaryDir& folder, const QString& name, int width, int height) {
    QImage image(width, height, QImage::Format_RGB888);
    image.fill(QColor(10, 200, 30));
    const QString path = folder.filePath(name);
    image.save(path, "BMP");
    return path;
}

// Chooses `path` in the file dialog that opens next; `then` is set up for the
// dialog after it.
void ChooseFileInNextDialog(const QString& path, std::function<void()> then = {}) {
    WithNextDialog([path, then](QDialog* dialog) {
        auto* files = qobject_cast<QFileDialog*>(dialog);
        ASSERT_NE(files, nullptr);
        files->selectFile(path);
        if (then) {
            then();
        }
        QMetaObject::invokeMethod(files, "accept");
    });
}

class FileCommandsTest : public ::testing::Test {
protected:
    void Start(const QStringList& files = {}) {
        ASSERT_TRUE(app.InitInstance(files));
        frame = app.MainFrame();
        frame->resize(500, 400);
        frame->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(frame));
        presenter = std::make_unique<ScriptedPresenter>();
    }
    bool Enabled(int id) { return frame->Router().IsEnabled(id); }
    ColorWord Pixel(int x, int y) { return app.Document().GetPicture()->GetPixel(x, y); }

    QTemporaryDir folder;
    CBriselApp app;
    CMainFrame* frame = nullptr;
    std::unique_ptr<ScriptedPresenter> presenter;
};

TEST_F(FileCommandsTest, OpensTheFileNamedAtStartAndRemembersIt) {
    const QString path = WritePicture(folder, "start.bmp", 64, 48);
    Start({path});
    EXPECT_EQ(app.Document().GetPicture()->Width(), 64);
    EXPECT_EQ(Pixel(5, 5), MakeColorWord(10, 200, 30));
    EXPECT_EQ(frame->windowTitle(), QStringLiteral("start.bmp[*] \u2014 Tamrick"));
    EXPECT_EQ(frame->View()->State().imageWidth, 64);
    EXPECT_EQ(app.Recent().At(0), path);
    EXPECT_TRUE(Enabled(cmd::kRecentFirst));
    EXPECT_EQ(frame->Router().Action(cmd::kRecentFirst)->text(), "&1 start.bmp");
    EXPECT_FALSE(frame->Router().Action(cmd::kRecentFirst + 1)->isVisible());
    EXPECT_FALSE(Enabled(cmd::kSave)); // nothing changed yet
    EXPECT_FALSE(Enabled(cmd::kRevert));
}

TEST_F(FileCommandsTest, OpenSaveRevertAndSaveAsFlows) {
    Start();
    const QString path = WritePicture(folder, "photo.bmp", 40, 30);
    ChooseFileInNextDialog(path);
    ASSERT_TRUE(frame->Router().Execute(cmd::kOpen));
    ASSERT_EQ(app.Document().GetPicture()->Width(), 40);

    // Paint, then Revert brings the file's pixels back and forgets the undo step.
    frame->UndoHistory().Record(app.Document(), 1);
    app.Document().GetPicture()->SetPixel(1, 1, 0);
    app.Document().SetModifiedFlag(true);
    EXPECT_TRUE(Enabled(cmd::kSave));
    EXPECT_TRUE(Enabled(cmd::kRevert));
    presenter->Answer(MessageAnswer::Yes);
    ASSERT_TRUE(frame->Router().Execute(cmd::kRevert));
    EXPECT_EQ(presenter->ShownIds(), std::vector<int>{platform::IDS_REVERT_DISCARDS_CHANGES});
    EXPECT_EQ(Pixel(1, 1), MakeColorWord(10, 200, 30));
    EXPECT_FALSE(Enabled(cmd::kUndo));

    // Save writes over the file; reopening shows the change.
    app.Document().GetPicture()->SetPixel(2, 2, 0);
    app.Document().SetModifiedFlag(true);
    ASSERT_TRUE(frame->Router().Execute(cmd::kSave));
    EXPECT_FALSE(app.Document().IsModified());
    EXPECT_EQ(QImage(path).pixelColor(2, 2), QColor(0, 0, 0));

    // Save As adopts the new name.
    const QString copy = folder.filePath("copy.bmp");
    ChooseFileInNextDialog(copy);
    ASSERT_TRUE(frame->Router().Execute(cmd::kSaveAs));
    EXPECT_TRUE(QFile::exists(copy));
    EXPECT_EQ(frame->windowTitle(), QStringLiteral("copy.bmp[*] \u2014 Tamrick"));
    EXPECT_EQ(app.Recent().At(0), copy);
    EXPECT_EQ(presenter->Shown().size(), 1u) << "only Revert asked";
}

TEST_F(FileCommandsTest, ChangesAreOfferedForSavingBeforeNewOpenAndExit) {
    Start();
    app.Document().SetModifiedFlag(true);
    // Cancel stops New before its dialog opens.
    presenter->Answer(MessageAnswer::Cancel);
    frame->Router().Execute(cmd::kNew);
    ASSERT_EQ(presenter->Shown().size(), 1u);
    EXPECT_EQ(presenter->Shown().front().text.rfind("Save changes to ", 0), 0u);
    EXPECT_EQ(presenter->Shown().front().buttons, platform::MessageButtons::YesNoCancel);
    EXPECT_TRUE(app.Document().IsModified());

    // Cancel keeps the window open at Exit.
    presenter->Answer(MessageAnswer::Cancel);
    frame->Router().Execute(cmd::kExit);
    EXPECT_TRUE(frame->isVisible());

    // No goes ahead: a dropped file replaces the picture.
    const QString dropped = WritePicture(folder, "dropped.bmp", 12, 9);
    presenter->Answer(MessageAnswer::No);
    emit frame->ViewWindow()->FileDropped(dropped);
    EXPECT_EQ(app.Document().GetPicture()->Width(), 12);
    EXPECT_FALSE(app.Document().IsModified());
}

TEST_F(FileCommandsTest, SavingThroughTheDialogFromTheQuestionLetsTheCommandGoOn) {
    Start();
    // A never-saved picture: Yes, a name, then Open goes on to its own dialog.
    app.Document().SetModifiedFlag(true);
    const QString first = folder.filePath("first.bmp");
    const QString other = WritePicture(folder, "other.bmp", 12, 9);
    presenter->Answer(MessageAnswer::Yes);
    ChooseFileInNextDialog(first, [other] { ChooseFileInNextDialog(other); });
    frame->Router().Execute(cmd::kOpen);
    EXPECT_TRUE(QFile::exists(first));
    EXPECT_EQ(app.Recent().At(0), other);
    EXPECT_EQ(app.Recent().At(1), first);
    EXPECT_EQ(app.Document().GetPicture()->Width(), 12);

    // A picture from a GIF file: the question names the file; saved under a
    // new name, New goes on to its dialog.
    const QString gif = folder.filePath("anim.gif");
    ChooseFileInNextDialog(gif);
    ASSERT_TRUE(frame->Router().Execute(cmd::kSaveAs));
    app.Document().SetModifiedFlag(true);
    const QString copy = folder.filePath("anim.bmp");
    bool newDialogShown = false;
    presenter->Answer(MessageAnswer::Yes);
    ChooseFileInNextDialog(copy, [&newDialogShown] {
        WithNextDialog([&newDialogShown](QDialog* dialog) {
            newDialogShown = dialog != nullptr && qobject_cast<QFileDialog*>(dialog) == nullptr;
            if (dialog != nullptr) {
                dialog->reject();
            }
        });
    });
    frame->Router().Execute(cmd::kNew);
    EXPECT_EQ(presenter->Shown().back().text, "Save changes to " + gif.toStdString() + "?");
    EXPECT_TRUE(QFile::exists(copy));
    EXPECT_TRUE(newDialogShown);
    EXPECT_EQ(frame->windowTitle(), QStringLiteral("anim.bmp[*] \u2014 Tamrick"));

    // Closing: after the save through the dialog the window closes.
    app.CreateNewImage({16, 16, 72, 0});
    app.Document().SetModifiedFlag(true);
    presenter->Answer(MessageAnswer::Yes);
    ChooseFileInNextDialog(folder.filePath("last.bmp"));
    frame->Router().Execute(cmd::kExit);
    EXPECT_TRUE(QFile::exists(folder.filePath("last.bmp")));
    EXPECT_FALSE(frame->isVisible());
}

TEST_F(FileCommandsTest, AMissingFileIsReportedAndLeavesThePicture) {
    Start();
    const CDibImage* before = app.Document().GetPicture();
    EXPECT_FALSE(app.OpenDocumentFile(folder.filePath("gone.bmp")));
    EXPECT_EQ(app.Document().GetPicture(), before);
    ASSERT_EQ(presenter->Shown().size(), 1u);
    EXPECT_NE(presenter->Shown().front().text.find("Unable to open this image file !"), std::string::npos);
}

// A file that cannot be read leaves everything as it was: picture, name,
// caption, modified flag and undo.
TEST_F(FileCommandsTest, ABrokenFileLeavesTheDocumentAsItWas) {
    const QString path = WritePicture(folder, "kept.bmp", 20, 10);
    Start({path});
    frame->UndoHistory().Record(app.Document(), 1);
    app.Document().GetPicture()->SetPixel(1, 1, 0);
    app.Document().SetModifiedFlag(true);
    const QString caption = frame->windowTitle();
    const CDibImage* before = app.Document().GetPicture();
    QFile broken(folder.filePath("broken.jpg"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("\xFF\xD8\xFF\xE0 cut short");
    broken.close();
    presenter->Answer(MessageAnswer::No); // do not save the changes first
    EXPECT_FALSE(app.OpenDocumentFile(broken.fileName()));
    EXPECT_EQ(presenter->ShownIds().back(), platform::IDS_UNABLE_TO_OPEN);
    EXPECT_EQ(app.Document().GetPicture(), before);
    EXPECT_EQ(app.Document().PathName(), path.toStdString());
    EXPECT_EQ(frame->windowTitle(), caption);
    EXPECT_TRUE(app.Document().IsModified());
    EXPECT_TRUE(Enabled(cmd::kUndo));
}

// Saving over a file with transparent pixels asks first; another file never.
TEST_F(FileCommandsTest, SavingOverATransparentFileAsksFirst) {
    QImage translucent(6, 4, QImage::Format_ARGB32);
    translucent.fill(QColor(10, 200, 30, 255));
    translucent.setPixelColor(2, 2, QColor(10, 200, 30, 0));
    const QString path = folder.filePath("clear.png");
    ASSERT_TRUE(translucent.save(path, "PNG"));
    Start({path});
    EXPECT_TRUE(app.Document().FileHasTransparency());
    EXPECT_EQ(Pixel(2, 2), MakeColorWord(255, 255, 255)) << "shown over white";
    app.Document().SetModifiedFlag(true);

    presenter->Answer(MessageAnswer::Cancel);
    EXPECT_FALSE(frame->Router().Execute(cmd::kSave) && !app.Document().IsModified());
    EXPECT_EQ(presenter->ShownIds().back(), platform::IDS_SAVE_WITHOUT_TRANSPARENCY);
    EXPECT_EQ(QImage(path).pixelColor(2, 2).alpha(), 0) << "Cancel writes nothing";

    // No goes to Save As; the copy is a file of its own and asks nothing.
    const QString copy = folder.filePath("copy.png");
    presenter->Answer(MessageAnswer::No);
    ChooseFileInNextDialog(copy);
    frame->Router().Execute(cmd::kSave);
    EXPECT_TRUE(QFile::exists(copy));
    EXPECT_EQ(QImage(path).pixelColor(2, 2).alpha(), 0);
    EXPECT_FALSE(app.Document().FileHasTransparency());
    const std::size_t asked = presenter->Shown().size();
    app.Document().SetModifiedFlag(true);
    ASSERT_TRUE(frame->Router().Execute(cmd::kSave));
    EXPECT_EQ(presenter->Shown().size(), asked);

    // Yes saves over the transparent file.
    ASSERT_TRUE(app.OpenDocumentFile(path));
    app.Document().SetModifiedFlag(true);
    presenter->Answer(MessageAnswer::Yes);
    ASSERT_TRUE(frame->Router().Execute(cmd::kSave));
    EXPECT_EQ(QImage(path).pixelColor(2, 2), QColor(255, 255, 255));
    EXPECT_FALSE(app.Document().FileHasTransparency());
}

TEST_F(FileCommandsTest, SendingASavedPictureGoesAtOnceAndANewOneAsksFirst) {
    std::vector<QStringList> started;
    ExternalSender::SetLauncher([&](const QString&, const QStringList& arguments) {
        started.push_back(arguments);
        return true;
    });
    const QString path = WritePicture(folder, "send.bmp", 8, 8);
    Start({path});
    ASSERT_TRUE(frame->Router().Execute(cmd::kSendMail));
    EXPECT_TRUE(presenter->Shown().empty());
    ASSERT_EQ(started.size(), 1u);
    EXPECT_EQ(started.back(), (QStringList{"--attach", path}));
    frame->Router().Execute(cmd::kSendInfrared);
    EXPECT_EQ(started.back(), QStringList{path});

    // A never-saved picture: No stops, since there is no file to send.
    ASSERT_TRUE(app.CreateNewImage({16, 16, 72, 0}));
    presenter->Answer(MessageAnswer::No);
    frame->Router().Execute(cmd::kSendMail);
    EXPECT_EQ(presenter->ShownIds(), std::vector<int>{platform::IDS_SAVE_BEFORE_SENDING});
    EXPECT_EQ(started.size(), 2u);

    // Without a sending program the user is told.
    ExternalSender::SetLauncher([](const QString&, const QStringList&) { return false; });
    app.OpenDocumentFile(path);
    frame->Router().Execute(cmd::kSendInfrared);
    EXPECT_EQ(presenter->ShownIds().back(), platform::IDS_NO_BLUETOOTH_SENDER);
    ExternalSender::SetLauncher(nullptr);
}

} // namespace
