#include "app/CBriselApp.h"
#include "app/CMainFrame.h"
#include "app/ClipboardExchange.h"
#include "app/CommandIds.h"
#include "app/CommandRouter.h"
#include "image/CBriselDoc.h"
#include "platform/StringTable.h"
#include "support/ScriptedPresenter.h"
#include "view/CBriselView.h"
#include "view/CViewWindow.h"

#include <QAction>
#include <QClipboard>
#include <QImage>
#include <QMimeData>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using platform::MessageAnswer;

ColorWord Shade(int x, int y) {
    return MakeColorWord((x * 8) % 256, (y * 12) % 256, 77);
}

class ClipboardCommandsTest : public ::testing::Test {
protected:
    void SetUp() override {
        QGuiApplication::clipboard()->clear();
        ASSERT_TRUE(app.InitInstance());
        frame = app.MainFrame();
        frame->resize(400, 300);
        frame->show();
        frame->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(frame));
        presenter = std::make_unique<ScriptedPresenter>();
        ASSERT_TRUE(app.CreateNewImage({120, 80, 72, 0}));
        CDibImage& picture = *doc().GetPicture();
        for (int y = 0; y < picture.Height(); ++y) {
            for (int x = 0; x < picture.Width(); ++x) {
                picture.SetPixel(x, y, Shade(x, y));
            }
        }
    }
    void TearDown() override { presenter.reset(); }

    CBriselDoc& doc() { return app.Document(); }
    CommandRouter& router() { return frame->Router(); }
    bool Enabled(int id) {
        router().UpdateAll();
        return router().Action(id)->isEnabled();
    }
    // The keyboard's way to a command: its accelerator on the main window.
    void Press(Qt::Key key) {
        router().UpdateAll();
        QTest::keyClick(frame, key, Qt::ControlModifier);
    }
    // A 6 x 4 selection at (3, 2) whose mask misses its top-left pixel.
    void SelectShape() {
        ASSERT_TRUE(doc().CreateFloating(3, 2, 8, 5, false));
        doc().SetFloatPosition(3, 2);
        doc().GetFloatMask()->SetBit(0, 0, false);
    }

    CBriselApp app;
    CMainFrame* frame = nullptr;
    std::unique_ptr<ScriptedPresenter> presenter;
};

TEST_F(ClipboardCommandsTest, CutThenPasteGivesTheSamePixelsAndMaskAndExitAsksAboutThem) {
    EXPECT_FALSE(Enabled(cmd::kPaste));
    EXPECT_FALSE(Enabled(cmd::kCut)) << "no selection";
    SelectShape();
    Press(Qt::Key_X); // Cut: Copy, then Clear
    EXPECT_EQ(doc().GetFloatImage()->GetPixel(2, 2), frame->Background());
    EXPECT_TRUE(frame->HasClipboardData());
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    ASSERT_NE(data, nullptr);
    EXPECT_TRUE(data->hasImage()) << "other programs get a plain image";
    EXPECT_EQ(qvariant_cast<QImage>(data->imageData()).pixel(1, 0), qRgb(32, 24, 77));
    EXPECT_TRUE(data->hasFormat(ClipboardExchange::kMaskMime));
    EXPECT_TRUE(Enabled(cmd::kPaste));

    // Scrolled to the picture's middle, the paste lands on the first visible pixel.
    router().Execute(cmd::kMagnifyIds[6]);
    frame->View()->ScrollToPosition(80, 48);
    const ViewState& state = frame->View()->State();
    ASSERT_GT(state.firstVisibleX, 0);
    Press(Qt::Key_V);
    ASSERT_NE(doc().GetFloatImage(), nullptr);
    EXPECT_EQ(doc().FloatX(), state.firstVisibleX);
    EXPECT_EQ(doc().FloatY(), state.firstVisibleY);
    const CDibImage& pasted = *doc().GetFloatImage();
    ASSERT_EQ(pasted.Width(), 6);
    ASSERT_EQ(pasted.Height(), 4);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 6; ++x) {
            EXPECT_EQ(pasted.GetPixel(x, y), Shade(x + 3, y + 2));
            EXPECT_EQ(doc().GetFloatMask()->GetBit(x, y), x == 0 && y == 0 ? 0 : 1);
        }
    }
    EXPECT_EQ(frame->UndoHistory().Kind(), 5);
    EXPECT_TRUE(frame->View()->State().outlineTimerOn);

    presenter->Answer(MessageAnswer::Yes); // keep the data for other programs
    presenter->Answer(MessageAnswer::No);  // do not save the picture
    router().Execute(cmd::kExit);
    ASSERT_FALSE(presenter->ShownIds().empty());
    EXPECT_EQ(presenter->ShownIds().front(), platform::IDS_CLIPBOARD_KEEP_DATA);
    EXPECT_TRUE(QGuiApplication::clipboard()->mimeData()->hasFormat(ClipboardExchange::kDibMime));
}

TEST_F(ClipboardCommandsTest, AnotherProgramsImageIsPastedAsTrueColourWithAFullMask) {
    QImage foreign(5, 3, QImage::Format_ARGB32);
    foreign.fill(qRgb(10, 20, 30));
    foreign.setPixel(4, 2, qRgba(0, 0, 0, 0)); // transparent: pasted as white
    QGuiApplication::clipboard()->setImage(foreign);
    ASSERT_TRUE(router().Action(cmd::kPaste)->isEnabled()) << "enabled as soon as the clipboard changes";
    Press(Qt::Key_V);
    ASSERT_NE(doc().GetFloatImage(), nullptr);
    const CDibImage& pasted = *doc().GetFloatImage();
    EXPECT_EQ(pasted.BitsPerPixel(), 24);
    EXPECT_EQ(pasted.Width(), 5);
    EXPECT_EQ(pasted.GetPixel(0, 0), MakeColorWord(10, 20, 30));
    EXPECT_EQ(pasted.GetPixel(4, 2), 0x00FFFFFFu);
    EXPECT_EQ(doc().GetFloatMask()->GetBit(4, 2), 1);
    EXPECT_TRUE(presenter->Shown().empty());
}

TEST_F(ClipboardCommandsTest, IndexedAndOneBitPicturesAreRefusedAndChangeNothing) {
    const QImage::Format refused[] = {QImage::Format_Indexed8, QImage::Format_Mono,
                                      QImage::Format_Grayscale8};
    for (const QImage::Format format : refused) {
        QImage foreign(4, 4, format);
        if (format != QImage::Format_Grayscale8) {
            foreign.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
        }
        foreign.fill(1);
        QGuiApplication::clipboard()->setImage(foreign);
        presenter.reset();
        presenter = std::make_unique<ScriptedPresenter>();
        router().Execute(cmd::kPaste);
        router().Execute(cmd::kPasteAsNew);
        EXPECT_EQ(presenter->ShownIds(), (std::vector<int>{platform::IDS_PASTE_TRUE_COLOR_ONLY,
                                                           platform::IDS_PASTE_TRUE_COLOR_ONLY}))
            << format;
        EXPECT_EQ(doc().GetFloatImage(), nullptr);
        EXPECT_EQ(doc().GetPicture()->Width(), 120);
        EXPECT_FALSE(router().IsEnabled(cmd::kUndo));
    }
}

TEST_F(ClipboardCommandsTest, PasteAsNewMakesAnUntitledPictureAndEmptiesTheUndoRecord) {
    // The whole picture, without a selection: it becomes the picture itself.
    router().Execute(cmd::kCopy);
    router().Execute(32783); // Image > Invert, an undoable step
    ASSERT_TRUE(router().IsEnabled(cmd::kUndo));
    presenter->Answer(MessageAnswer::Cancel); // the save-changes question
    router().Execute(cmd::kPasteAsNew);
    EXPECT_TRUE(router().IsEnabled(cmd::kUndo)) << "cancelled: nothing happens";

    presenter->Answer(MessageAnswer::No);
    router().Execute(cmd::kMagnifyIds[0]);
    router().Execute(cmd::kPasteAsNew);
    EXPECT_FALSE(router().IsEnabled(cmd::kUndo));
    EXPECT_EQ(doc().GetFloatMask(), nullptr);
    EXPECT_EQ(doc().GetPicture()->GetPixel(5, 6), Shade(5, 6));
    EXPECT_EQ(frame->View()->Zoom(), 1);
    EXPECT_TRUE(doc().PathName().empty());
    EXPECT_TRUE(doc().IsModified());

    // A selection travels with its mask: it floats over a background-coloured
    // picture of its own size.
    SelectShape();
    router().Execute(cmd::kCopy);
    presenter->Answer(MessageAnswer::No);
    router().Execute(cmd::kPasteAsNew);
    ASSERT_EQ(doc().GetPicture()->Width(), 6);
    EXPECT_EQ(doc().GetPicture()->GetPixel(2, 2), frame->Background());
    ASSERT_NE(doc().GetFloatMask(), nullptr);
    EXPECT_EQ(doc().GetFloatRect(), (ImageRect{0, 0, 6, 4}));
    EXPECT_EQ(doc().GetFloatMask()->GetBit(0, 0), 0);
    EXPECT_EQ(doc().GetFloatImage()->GetPixel(1, 0), Shade(4, 2));
    EXPECT_EQ(doc().GetSelectionMask()->Width(), 6);
    EXPECT_FALSE(router().IsEnabled(cmd::kUndo));
    EXPECT_TRUE(frame->View()->State().outlineTimerOn);
}

} // namespace
