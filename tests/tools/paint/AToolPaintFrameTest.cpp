#include "app/AppTestSupport.h"
#include "app/CBriselApp.h"
#include "app/CMainFrame.h"
#include "app/CommandIds.h"
#include "app/CommandRouter.h"
#include "app/ToolPalette.h"
#include "image/CBriselDoc.h"
#include "image/DibHelpers.h"
#include "support/ImageFixtures.h"
#include "view/CBriselView.h"
#include "view/CViewWindow.h"

#include <QAction>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

namespace {

// The tools inside the real main window: its pen, colours, colour buttons and
// undo record reach them through the view host.
class AToolPaintFrameTest : public ::testing::Test {
protected:
    void SetUp() override {
        frame = ShowMainFrame(app, 640, 480);
        ASSERT_NE(frame, nullptr);
        ASSERT_TRUE(app.CreateNewImage({80, 60, 72, 0}));
    }
    QWidget* Port() { return frame->ViewWindow()->viewport(); }
    QPoint At(int x, int y) { return frame->View()->ImageToScreen({x, y}); }
    ColorWord Pixel(int x, int y) { return app.Document().GetPicture()->GetPixel(x, y); }

    CBriselApp app;
    CMainFrame* frame = nullptr;
};

TEST_F(AToolPaintFrameTest, PenPaintsWithTheFramesPenAndColoursAndUndoes) {
    frame->OnToolCommand(33009);
    const ColorWord paper = Pixel(40, 30);
    QTest::mousePress(Port(), Qt::LeftButton, {}, At(20, 30));
    QTest::mouseMove(Port(), At(60, 30));
    QTest::mouseRelease(Port(), Qt::LeftButton, {}, At(60, 30));
    EXPECT_EQ(Pixel(40, 30), frame->Foreground());
    const int reach = frame->PenSize() / 2;
    EXPECT_EQ(Pixel(40, 30 - reach), frame->Foreground());
    EXPECT_EQ(Pixel(40, 30 - reach - 1), paper);
    EXPECT_TRUE(app.Document().IsModified());
    frame->OnUndo();
    EXPECT_EQ(Pixel(40, 30), paper);
}

TEST_F(AToolPaintFrameTest, ThreeStrokesAndThreeCtrlZGiveTheOriginalBackAndTheMenuNamesTheStep) {
    frame->OnToolCommand(33009);
    const auto original = DuplicateImage(app.Document().GetPicture());
    for (int y : {10, 25, 40}) {
        QTest::mousePress(Port(), Qt::LeftButton, {}, At(10, y));
        QTest::mouseMove(Port(), At(70, y + 5));
        QTest::mouseRelease(Port(), Qt::LeftButton, {}, At(70, y + 5));
    }
    const auto painted = DuplicateImage(app.Document().GetPicture());
    CommandRouter& router = frame->Router();
    router.UpdateAll();
    EXPECT_EQ(router.Action(cmd::kUndo)->text(), "&Undo Pen");
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(frame, Qt::Key_Z, Qt::ControlModifier);
    }
    EXPECT_TRUE(SamePixels(*app.Document().GetPicture(), *original));
    EXPECT_FALSE(app.Document().IsModified()) << "back to the picture as it was made";
    EXPECT_FALSE(router.Action(cmd::kUndo)->isEnabled());
    EXPECT_EQ(router.Action(cmd::kRedo)->text(), "&Redo Pen");

    QTest::keyClick(frame, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(frame, Qt::Key_Y, Qt::ControlModifier);
    QTest::keyClick(frame, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_TRUE(SamePixels(*app.Document().GetPicture(), *painted));
    EXPECT_TRUE(app.Document().IsModified());

    ASSERT_TRUE(router.Execute(32799));
    EXPECT_EQ(router.Action(cmd::kUndo)->text(), "&Undo Rotate Right");
    ASSERT_TRUE(router.Execute(cmd::kUndo));
    EXPECT_EQ(router.Action(cmd::kRedo)->text(), "&Redo Rotate Right");
    EXPECT_EQ(router.Action(cmd::kUndo)->text(), "&Undo Pen");
}

TEST_F(AToolPaintFrameTest, PickerFillsTheCurrentColourButton) {
    app.Document().GetPicture()->SetPixel(10, 10, 0x00123456);
    frame->OnToolCommand(33032);
    frame->Palette()->ColorButton(1)->click();
    ASSERT_EQ(frame->Palette()->CurrentColorSlot(), 1);
    QTest::mouseClick(Port(), Qt::LeftButton, {}, At(10, 10));
    EXPECT_EQ(frame->Background(), 0x00123456u);
    EXPECT_NE(frame->Foreground(), 0x00123456u);
}

} // namespace
