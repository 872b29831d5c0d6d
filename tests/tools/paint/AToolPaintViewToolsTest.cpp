#include "tools/paint/AToolPaintPicker.h"
#include "tools/paint/ToolTestSupport.h"

#include <QScrollBar>
#include <cstdlib>

namespace {

using AToolPaintViewToolsTest = ToolWindowTest;

TEST_F(AToolPaintViewToolsTest, ZoomToolBringsTheTappedPixelToTheMiddle) {
    Open(300, 200);
    UseTool(33028);
    Press(200, 150);
    ASSERT_EQ(View().Zoom(), 2);
    const QSize client = view.ClientSize();
    const QPoint middle = View().ScreenToImage({client.width() / 2, client.height() / 2});
    EXPECT_LE(std::abs(middle.x() - 200), 1);
    EXPECT_LE(std::abs(middle.y() - 150), 1);
}

TEST_F(AToolPaintViewToolsTest, ZoomOutStopsAtTheSmallestFactorWithoutScrolling) {
    Open(300, 200);
    UseTool(33029);
    int previous = View().Zoom();
    for (int i = 0; i < 12; ++i) {
        QTest::mouseClick(Port(), Qt::LeftButton, {}, At(10, 10));
        if (View().Zoom() == previous) {
            break;
        }
        previous = View().Zoom();
    }
    ASSERT_LT(View().Zoom(), 0);
    const int x = view.horizontalScrollBar()->value();
    const int y = view.verticalScrollBar()->value();
    QTest::mouseClick(Port(), Qt::LeftButton, {}, At(10, 10));
    EXPECT_EQ(View().Zoom(), previous);
    EXPECT_EQ(view.horizontalScrollBar()->value(), x);
    EXPECT_EQ(view.verticalScrollBar()->value(), y);
}

TEST_F(AToolPaintViewToolsTest, MovePictureKeepsTheGrabbedPixelUnderThePen) {
    Open(400, 300);
    UseTool(33031);
    View().ScrollToPosition(50, 50);
    const QPoint grab = At(100, 100);
    QTest::mousePress(Port(), Qt::LeftButton, {}, grab);
    const QPoint pen = grab - QPoint(30, 20);
    QTest::mouseMove(Port(), pen);
    EXPECT_EQ(view.horizontalScrollBar()->value(), 80);
    EXPECT_EQ(view.verticalScrollBar()->value(), 70);
    EXPECT_EQ(View().ScreenToImage(pen), QPoint(100, 100));
    QTest::mouseRelease(Port(), Qt::LeftButton, {}, pen);
    EXPECT_TRUE(View().State().outlineEnabled);
}

TEST_F(AToolPaintViewToolsTest, MovePictureLeavesAFittingPictureAlone) {
    Open(40, 30);
    UseTool(33031);
    const QPoint before = At(0, 0);
    Drag(10, 10, 30, 25);
    EXPECT_EQ(At(0, 0), before);
}

TEST_F(AToolPaintViewToolsTest, PickerTakesTheFloatingPixelFirstIntoTheCurrentButton) {
    Open(40, 40);
    host.doc.GetPicture()->SetPixel(10, 10, kGreen);
    host.doc.GetPicture()->SetPixel(2, 2, kRed);
    ASSERT_EQ(host.doc.CreateFloating(5, 5, 14, 14, false), 1);
    host.doc.SetFloatPosition(5, 5);
    host.doc.GetFloatImage()->SetPixel(5, 5, kBlue);
    UseTool(33032);
    QTest::mouseClick(Port(), Qt::LeftButton, {}, At(10, 10));
    EXPECT_EQ(host.foreground, kBlue);

    host.colorSlot = 1;
    Press(20, 20);
    MoveTo(2, 2);
    Release(2, 2);
    EXPECT_EQ(host.background, kRed);
    EXPECT_EQ(host.foreground, kBlue);

    // Where the floating mask is clear, the picture shows through.
    host.doc.SetFloatMask(CreateMask(10, 10, true));
    EXPECT_EQ(AToolPaintPicker::ColorAt(host.doc, {10, 10}), kGreen);
}

} // namespace
