#include "app/AppTestSupport.h"
#include "app/CBriselApp.h"
#include "app/CMainFrame.h"
#include "app/ClipboardExchange.h"
#include "app/CommandIcons.h"
#include "app/CommandIds.h"
#include "app/CommandRouter.h"
#include "app/CommandTable.h"
#include "app/ToolPalette.h"
#include "dialogs/NewImageDialog.h"
#include "platform/StringTable.h"
#include "support/ScriptedPresenter.h"
#include "view/CBriselView.h"
#include "view/CViewWindow.h"

#include <QAction>
#include <QClipboard>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTest>
#include <QToolButton>
#include <algorithm>
#include <set>
#include <gtest/gtest.h>

namespace {

class MainFrameTest : public ::testing::Test {
protected:
    void SetUp() override {
        frame = ShowMainFrame(app, 640, 480);
        ASSERT_NE(frame, nullptr);
        presenter = std::make_unique<ScriptedPresenter>();
    }
    void TearDown() override { presenter.reset(); }

    CommandRouter& Router() { return frame->Router(); }
    bool Enabled(int id) {
        Router().UpdateAll();
        return Router().Action(id)->isEnabled();
    }
    void NewPicture(int width, int height) { ASSERT_TRUE(app.CreateNewImage({width, height, 72, 0})); }

    CBriselApp app;
    CMainFrame* frame = nullptr;
    std::unique_ptr<ScriptedPresenter> presenter;
};

QAction* FindInMenus(QWidget* menu, int id) {
    for (QAction* action : menu->actions()) {
        if (action->menu() != nullptr) {
            if (QAction* found = FindInMenus(action->menu(), id)) {
                return found;
            }
        } else if (action->data().toInt() == id) {
            return action;
        }
    }
    return nullptr;
}

TEST_F(MainFrameTest, MenusHoldEveryEntryOfTheCommandTable) {
    const QStringList titles = [this] {
        QStringList list;
        for (QAction* action : frame->menuBar()->actions()) {
            list << QString(action->text()).remove(QLatin1Char('&'));
        }
        return list;
    }();
    EXPECT_EQ(titles, (QStringList{"File", "Edit", "View", "Image", "Filter", "Help"}));
    for (const CommandEntry& entry : CommandTable()) {
        if (entry.menu == nullptr) {
            continue;
        }
        QAction* action = FindInMenus(frame->menuBar(), entry.id);
        ASSERT_NE(action, nullptr) << entry.label;
        if (entry.id < cmd::kRecentFirst || entry.id >= cmd::kRecentFirst + cmd::kRecentCount) {
            // Mnemonics add an '&' and nothing else; recent entries show file names.
            EXPECT_EQ(QString(action->text()).remove(QLatin1Char('&')),
                      QString::fromUtf8(entry.label).remove(QLatin1Char('&')));
        }
    }
    // Filter commands carry the filter engine's ids, decided by their labels.
    EXPECT_EQ(FindInMenus(frame->menuBar(), 32794)->text(), "&Small");
}

// Commands with a standard key take the desktop's bindings for it, and the
// keys reach them.
TEST_F(MainFrameTest, StandardShortcutsAreShownAndTriggerTheirCommands) {
    const std::pair<int, QKeySequence::StandardKey> standard[] = {
        {cmd::kNew, QKeySequence::New},         {cmd::kOpen, QKeySequence::Open},
        {cmd::kSave, QKeySequence::Save},       {cmd::kSaveAs, QKeySequence::SaveAs},
        {cmd::kExit, QKeySequence::Quit},       {cmd::kCut, QKeySequence::Cut},
        {cmd::kCopy, QKeySequence::Copy},       {cmd::kPaste, QKeySequence::Paste},
        {cmd::kClear, QKeySequence::Delete},    {cmd::kSelectAll, QKeySequence::SelectAll},
        {cmd::kSelectNone, QKeySequence::Deselect}, {cmd::kHelp, QKeySequence::HelpContents},
        {cmd::kZoomIn, QKeySequence::ZoomIn},   {cmd::kZoomOut, QKeySequence::ZoomOut}};
    for (const auto& [id, key] : standard) {
        const QList<QKeySequence> bindings = QKeySequence::keyBindings(key);
        if (!bindings.isEmpty()) {
            EXPECT_EQ(Router().Action(id)->shortcuts().first(), bindings.first()) << id;
        }
    }
    const QList<QKeySequence> zoomIn = Router().Action(cmd::kZoomIn)->shortcuts();
    EXPECT_TRUE(zoomIn.contains(QKeySequence("Ctrl+=")));
    EXPECT_TRUE(zoomIn.contains(QKeySequence(QKeyCombination(Qt::ControlModifier | Qt::KeypadModifier, Qt::Key_Plus))));
    EXPECT_TRUE(Router().Action(cmd::kZoomOut)->shortcuts().contains(
        QKeySequence(QKeyCombination(Qt::ControlModifier | Qt::KeypadModifier, Qt::Key_Minus))));
    EXPECT_EQ(Router().Action(cmd::kActualImage)->shortcut(), QKeySequence("Ctrl+0"));

    frame->show();
    frame->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frame));
    NewPicture(40, 30);
    QTest::keyClick(frame, Qt::Key_A, Qt::ControlModifier);
    EXPECT_NE(app.Document().GetFloatMask(), nullptr) << "Ctrl+A selects all";
    QTest::keyClick(frame, Qt::Key_Delete);
    EXPECT_EQ(app.Document().GetFloatImage()->GetPixel(3, 3), frame->Background()) << "Delete clears";
    QTest::keyClick(frame, Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_EQ(frame->View()->Zoom(), 2);
    QTest::keyClick(frame, Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_EQ(frame->View()->Zoom(), 3);
    QTest::keyClick(frame, Qt::Key_Minus, Qt::ControlModifier | Qt::KeypadModifier);
    QTest::keyClick(frame, Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(frame->View()->Zoom(), 1);
}

TEST_F(MainFrameTest, EveryMenuCommandHasAnIconOfItsOwn) {
    std::set<std::pair<QString, QString>> drawn;
    std::set<QString> themed;
    for (const CommandEntry& entry : CommandTable()) {
        if (entry.menu == nullptr || (entry.id >= cmd::kRecentFirst && entry.id < cmd::kRecentFirst + cmd::kRecentCount)) {
            continue;
        }
        EXPECT_FALSE(Router().Action(entry.id)->icon().isNull()) << entry.label;
        const icons::CommandIconLook look = icons::LookOfCommand(entry.id);
        EXPECT_TRUE(drawn.insert({look.mark, look.color.name()}).second) << entry.label << " " << look.mark.toStdString();
        if (!look.themeName.isEmpty()) {
            EXPECT_TRUE(themed.insert(look.themeName).second) << entry.label;
        }
    }
}

TEST_F(MainFrameTest, EnablingRulesFollowTheDocument) {
    EXPECT_FALSE(Enabled(cmd::kUndo));
    EXPECT_FALSE(Enabled(cmd::kCut));
    EXPECT_TRUE(Enabled(cmd::kActualImage));
    EXPECT_TRUE(Enabled(cmd::kFullScreen));
    EXPECT_TRUE(Enabled(cmd::kImageInformation));

    CBriselDoc& doc = app.Document();
    ASSERT_EQ(frame->UndoHistory().Record(doc, 1), 1);
    doc.GetPicture()->SetPixel(0, 0, 0);
    EXPECT_TRUE(Enabled(cmd::kUndo));
    EXPECT_FALSE(Enabled(cmd::kRedo));
    EXPECT_TRUE(Router().Execute(cmd::kUndo));
    EXPECT_EQ(doc.GetPicture()->GetPixel(0, 0), 0x00FFFFFFu);
    EXPECT_TRUE(Enabled(cmd::kRedo));

    NewPicture(5000, 10);
    EXPECT_FALSE(Enabled(cmd::kRedo));          // a new picture empties the record
    EXPECT_TRUE(Enabled(cmd::kMagnifyIds[4]));  // x 6
    EXPECT_FALSE(Enabled(cmd::kMagnifyIds[5])); // x 7
    EXPECT_FALSE(Router().Execute(cmd::kMagnifyIds[6]));
    NewPicture(5, 100);
    EXPECT_TRUE(Enabled(cmd::kReduceIds[3]));  // / 5
    EXPECT_FALSE(Enabled(cmd::kReduceIds[6])); // / 8
}

TEST_F(MainFrameTest, ZoomCommandsReachTheViewAndTheCaption) {
    EXPECT_EQ(frame->windowTitle(), QStringLiteral("Untitled[*] \u2014 Tamrick"));
    NewPicture(300, 200);
    ASSERT_TRUE(Router().Execute(cmd::kMagnifyIds[1]));
    EXPECT_EQ(frame->View()->Zoom(), 3);
    EXPECT_EQ(frame->windowTitle(), QStringLiteral("Untitled[*] (x3) \u2014 Tamrick"));
    ASSERT_TRUE(Router().Execute(cmd::kZoomOut));
    ASSERT_TRUE(Router().Execute(cmd::kZoomOut));
    ASSERT_TRUE(Router().Execute(cmd::kZoomOut));
    EXPECT_EQ(frame->windowTitle(), QStringLiteral("Untitled[*] (1/2) \u2014 Tamrick"));
    ASSERT_TRUE(Router().Execute(cmd::kActualImage));
    EXPECT_EQ(frame->View()->Zoom(), 1);
    EXPECT_EQ(frame->windowTitle(), QStringLiteral("Untitled[*] \u2014 Tamrick"));
    EXPECT_FALSE(frame->isWindowModified());
    app.Document().SetModifiedFlag(true);
    EXPECT_TRUE(frame->isWindowModified()) << "the modified mark follows the document";
}

// The options button is there only for tools that have options.
TEST_F(MainFrameTest, TheOptionsButtonFollowsTheToolsOptions) {
    const std::pair<int, bool> tools[] = {{33009, false}, {33010, true}, {33002, false}, {33004, true}, {33032, false}};
    for (const auto& [id, hasOptions] : tools) {
        ASSERT_TRUE(Router().Execute(id));
        EXPECT_EQ(frame->Palette()->OptionsButton()->isEnabled(), hasOptions) << id;
    }
}

TEST_F(MainFrameTest, PaletteSwitchesToolsAndOpensGroupsOnASecondPress) {
    ToolPalette* palette = frame->Palette();
    Router().Execute(cmd::kMagnifyIds[0]);
    const CBriselView* before = frame->View();
    QTest::mouseClick(palette->ToolButton(2), Qt::LeftButton);
    EXPECT_EQ(frame->ToolId(), 33009);
    EXPECT_NE(frame->View(), before);
    EXPECT_EQ(frame->View()->Zoom(), 2); // the view state travels with the switch
    EXPECT_EQ(palette->HighlightedButton(), 2);

    QTest::mouseClick(palette->ToolButton(2), Qt::LeftButton);
    QMenu* list = palette->OpenGroupList();
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(list->actions().size(), 17);
    EXPECT_EQ(list->actions().last()->text(), QStringLiteral("Clone Stamp"));
    list->actions().at(1)->trigger(); // "Eraser"
    EXPECT_EQ(frame->ToolId(), 33010);
    EXPECT_EQ(palette->RememberedTool(2), 33010);
    EXPECT_EQ(palette->ToolButton(2)->toolTip(), "Eraser (Ctrl+3)");

    // A tool command from elsewhere highlights the button of its group.
    Router().Execute(33029);
    EXPECT_EQ(palette->HighlightedButton(), 4);
    EXPECT_EQ(palette->RememberedTool(4), 33029);
    // The Stamp Tool is in no group: the palette stays as it was.
    Router().Execute(33027);
    EXPECT_EQ(frame->ToolId(), 33027);
    EXPECT_EQ(palette->HighlightedButton(), 4);
    EXPECT_TRUE(frame->OnToolAttributeRequest(1)); // handled, nothing opens
    Router().Execute(33009);
    EXPECT_FALSE(frame->OnToolAttributeRequest(1)); // the pen has no options dialog
}

TEST_F(MainFrameTest, ToolBarCommandHidesAndShowsThePalette) {
    EXPECT_TRUE(Router().IsChecked(cmd::kToolBar));
    Router().Execute(cmd::kToolBar);
    EXPECT_FALSE(frame->Palette()->isVisible());
    EXPECT_FALSE(Router().Action(cmd::kToolBar)->isChecked());
    Router().Execute(cmd::kToolBar);
    EXPECT_TRUE(frame->Palette()->isVisible());
    EXPECT_TRUE(Router().Action(cmd::kToolBar)->isChecked());
}

TEST_F(MainFrameTest, NewKeepsTheDialogOpenOnBadNumbersAndThenCreatesThePicture) {
    bool sawSizeMessage = false;
    WithNextDialog([&](QDialog* dialog) {
        auto* newImage = qobject_cast<NewImageDialog*>(dialog);
        ASSERT_NE(newImage, nullptr);
        newImage->WidthEdit()->setText("30001");
        newImage->accept();
        sawSizeMessage = presenter->ShownIds() == std::vector<int>{platform::IDS_NEW_SIZE_OUT_OF_RANGE};
        EXPECT_TRUE(newImage->isVisible());
        newImage->WidthEdit()->setText("320");
        newImage->HeightEdit()->setText("16");
        newImage->ResolutionEdit()->setText("0");
        newImage->accept();
        EXPECT_EQ(presenter->ShownIds().back(), platform::IDS_NEW_RESOLUTION_INVALID);
        newImage->ResolutionEdit()->setText("150");
        EXPECT_EQ(newImage->SizeText(), "15.00"); // 960 x 16 bytes
        newImage->accept();
    });
    app.Document().SetModifiedFlag(false);
    ASSERT_TRUE(Router().Execute(cmd::kNew));
    EXPECT_TRUE(sawSizeMessage);
    const CDibImage* picture = app.Document().GetPicture();
    EXPECT_EQ(picture->Width(), 320);
    EXPECT_EQ(picture->Height(), 16);
    EXPECT_EQ(picture->DpiX(), 150);
    EXPECT_EQ(picture->GetPixel(319, 15), 0x00FFFFFFu);
    EXPECT_EQ(frame->View()->State().imageWidth, 320);
    EXPECT_EQ(CBriselApp::StoredNewImageValues().width, 320);

    // Cancel changes nothing.
    WithNextDialog([](QDialog* dialog) { dialog->reject(); });
    Router().Execute(cmd::kNew);
    EXPECT_EQ(app.Document().GetPicture()->Width(), 320);
}

TEST_F(MainFrameTest, ExitAndTheCloseButtonAskAboutTheClipboardOnlyForOurOwnImageData) {
    using platform::MessageAnswer;
    const auto clipboardQuestions = [this] {
        const std::vector<int> ids = presenter->ShownIds();
        return std::count(ids.begin(), ids.end(), int{platform::IDS_CLIPBOARD_KEEP_DATA});
    };
    const auto holdsOurs = [] {
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        return data != nullptr && data->hasFormat(ClipboardExchange::kDibMime);
    };

    // We copied, then another program put its own picture there: not ours to offer or wipe.
    Router().Execute(cmd::kCopy);
    ASSERT_TRUE(frame->HasClipboardData());
    QGuiApplication::clipboard()->setImage(QImage(4, 4, QImage::Format_RGB32));
    Router().Execute(cmd::kExit);
    ASSERT_EQ(clipboardQuestions(), 0);
    ASSERT_NE(QGuiApplication::clipboard()->mimeData(), nullptr);
    EXPECT_TRUE(QGuiApplication::clipboard()->mimeData()->hasImage());
    EXPECT_FALSE(frame->isVisible());
    frame->show();

    // Exit closes the window, and the question comes once.
    Router().Execute(cmd::kCopy);
    presenter->Answer(MessageAnswer::Yes);
    Router().Execute(cmd::kExit);
    ASSERT_EQ(clipboardQuestions(), 1);
    EXPECT_TRUE(holdsOurs());
    EXPECT_FALSE(frame->isVisible());
    frame->show();
    frame->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frame));

    // Exit's key asks the same, then the save-changes question.
    app.Document().SetModifiedFlag(true);
    presenter->Answer(MessageAnswer::Yes);
    presenter->Answer(MessageAnswer::Cancel);
    QTest::keySequence(frame, QKeySequence::keyBindings(QKeySequence::Quit).value(0, QKeySequence("Ctrl+Q")));
    EXPECT_EQ(clipboardQuestions(), 2);
    EXPECT_EQ(presenter->Shown().back().buttons, platform::MessageButtons::YesNoCancel);
    EXPECT_TRUE(frame->isVisible()) << "Cancel keeps the program running";
    app.Document().SetModifiedFlag(false);

    // The window's close button asks it too; No empties the clipboard.
    presenter->Answer(MessageAnswer::No);
    EXPECT_TRUE(frame->close());
    EXPECT_EQ(clipboardQuestions(), 3);
    EXPECT_EQ(presenter->Shown().back().buttons, platform::MessageButtons::YesNo);
    EXPECT_EQ(presenter->Shown().back().icon, platform::MessageIcon::Question);
    EXPECT_FALSE(holdsOurs());
    EXPECT_FALSE(frame->HasClipboardData());
    EXPECT_FALSE(frame->isVisible());
}

} // namespace
