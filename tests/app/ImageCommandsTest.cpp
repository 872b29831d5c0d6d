#include "app/AppTestSupport.h"
#include "app/CBriselApp.h"
#include "app/CMainFrame.h"
#include "app/CommandIds.h"
#include "app/CommandRouter.h"
#include "dialogs/FillColorDialog.h"
#include "ops/OpsCommandTable.h"
#include "platform/Settings.h"
#include "support/ScriptedPresenter.h"
#include "view/CBriselView.h"

#include <QApplication>
#include <QDialog>
#include <QRadioButton>
#include <QTimer>

#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>

namespace {

class ImageCommandsTest : public ::testing::Test {
protected:
    void SetUp() override {
        frame = ShowMainFrame(app, 400, 300);
        ASSERT_NE(frame, nullptr);
        presenter = std::make_unique<ScriptedPresenter>();
        ASSERT_TRUE(app.CreateNewImage({30, 20, 72, 0}));
    }

    CBriselApp app;
    CMainFrame* frame = nullptr;
    std::unique_ptr<ScriptedPresenter> presenter;
};

TEST_F(ImageCommandsTest, FilterCommandsRunThroughTheMenuAndUndo) {
    CommandRouter& router = frame->Router();
    ASSERT_TRUE(router.IsEnabled(32783)); // Image > Invert
    ASSERT_TRUE(router.Execute(32783));
    EXPECT_EQ(app.Document().GetPicture()->GetPixel(3, 3), 0u);
    EXPECT_TRUE(app.Document().IsModified());
    ASSERT_TRUE(router.Execute(cmd::kUndo));
    EXPECT_EQ(app.Document().GetPicture()->GetPixel(3, 3), 0x00FFFFFFu);
    EXPECT_TRUE(presenter->Shown().empty());
}

TEST_F(ImageCommandsTest, AQuarterTurnResizesTheViewAndKeepsItsZoom) {
    CommandRouter& router = frame->Router();
    router.Execute(cmd::kMagnifyIds[0]);
    ASSERT_TRUE(router.Execute(32799)); // Rotate Right
    EXPECT_EQ(app.Document().GetPicture()->Width(), 20);
    EXPECT_EQ(frame->View()->State().imageWidth, 20);
    EXPECT_EQ(frame->View()->State().imageHeight, 30);
    EXPECT_EQ(frame->View()->Zoom(), 2);
}

TEST_F(ImageCommandsTest, EveryImageAndFilterCommandIsOfferedWithItsDialog) {
    for (const OpsCommand& command : OpsCommands()) {
        EXPECT_TRUE(frame->Router().IsEnabled(command.id)) << command.label;
    }
    // The menu runs Emboss only after its dialog's OK.
    QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
    EXPECT_TRUE(frame->Router().Execute(32778));
    EXPECT_FALSE(app.Document().IsModified());
    QTimer::singleShot(0, [] { static_cast<QDialog*>(QApplication::activeModalWidget())->accept(); });
    EXPECT_TRUE(frame->Router().Execute(32778));
    EXPECT_TRUE(app.Document().IsModified());
}

TEST_F(ImageCommandsTest, SelectionCommandsFollowTheSelection) {
    CommandRouter& router = frame->Router();
    EXPECT_FALSE(router.IsEnabled(cmd::kCrop));
    ASSERT_TRUE(router.Execute(cmd::kSelectAll));
    EXPECT_NE(app.Document().GetFloatMask(), nullptr);
    EXPECT_TRUE(frame->View()->State().outlineTimerOn);
    EXPECT_TRUE(router.IsEnabled(cmd::kCrop));
    EXPECT_TRUE(router.IsEnabled(cmd::kDiscardFloating));
    ASSERT_TRUE(router.Execute(cmd::kClear)); // the background colour: white
    ASSERT_TRUE(router.Execute(cmd::kSelectNone));
    EXPECT_EQ(app.Document().GetFloatMask(), nullptr);
    EXPECT_FALSE(frame->View()->State().outlineTimerOn);
    EXPECT_FALSE(router.IsEnabled(cmd::kPutFloating));
    EXPECT_TRUE(router.IsEnabled(cmd::kUndo));
}

TEST_F(ImageCommandsTest, FillAsksForItsColourAndKeepsTheChoice) {
    platform::Settings::WriteInt("Edit", "FillColor", 1);
    CommandRouter& router = frame->Router();
    ASSERT_TRUE(router.IsEnabled(cmd::kFill));
    int checkedOnOpen = -1;
    WithNextDialog([&checkedOnOpen](QDialog* dialog) {
        checkedOnOpen = static_cast<FillColorDialog*>(dialog)->Choice();
        dialog->reject();
    });
    router.Execute(cmd::kFill);
    EXPECT_EQ(checkedOnOpen, 1);
    EXPECT_FALSE(app.Document().IsModified());

    WithNextDialog([](QDialog* dialog) {
        const auto radios = dialog->findChildren<QRadioButton*>();
        const auto black = std::find_if(radios.begin(), radios.end(),
                                        [](QRadioButton* r) { return r->text() == QStringLiteral("Black"); });
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog));
        QTest::mouseClick(*black, Qt::LeftButton, {}, QPoint(6, (*black)->height() / 2));
        dialog->accept();
    });
    router.Execute(cmd::kFill);
    EXPECT_EQ(app.Document().GetPicture()->GetPixel(29, 19), 0u);
    EXPECT_EQ(platform::Settings::ReadInt("Edit", "FillColor", -1), 3);
    ASSERT_TRUE(router.Execute(cmd::kUndo));
    EXPECT_EQ(app.Document().GetPicture()->GetPixel(29, 19), 0x00FFFFFFu);
}

} // namespace
