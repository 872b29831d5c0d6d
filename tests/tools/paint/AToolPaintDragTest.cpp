#include "tools/paint/AToolPaintRect.h"
#include "tools/paint/ToolTestSupport.h"
#include "platform/Settings.h"

#include <QImage>

namespace {

class AToolPaintDragTest : public ToolWindowTest {
protected:
    void DrawRect(int style, int penSize) {
        platform::Settings::WriteInt("PaintRect", "DrawStyle", style);
        platform::Settings::WriteInt("PaintRect", "DrawFromCenter", 0);
        host.penSize = penSize;
        UseTool(33006);
        Drag(5, 5, 15, 12);
    }
    QRgb Screen(int x, int y) { return Port()->grab().toImage().pixel(At(x, y)); }
};

TEST_F(AToolPaintDragTest, RectangleStylesOutlineFramedAndFilled) {
    Open(40, 30);
    host.background = kGreen;
    DrawRect(0, 2);
    EXPECT_EQ(Pixel(5, 5), kRed);
    EXPECT_EQ(Pixel(6, 11), kRed);
    EXPECT_EQ(Pixel(15, 12), kRed);
    EXPECT_EQ(Pixel(7, 7), kWhite);
    EXPECT_EQ(Pixel(16, 12), kWhite);
    EXPECT_EQ(CountPixels(kRed), 11 * 8 - 7 * 4);
    EXPECT_TRUE(host.undo.CanUndo(&host.doc));

    DrawRect(1, 2);
    EXPECT_EQ(Pixel(7, 7), kGreen);
    EXPECT_EQ(Pixel(13, 10), kGreen);
    EXPECT_EQ(Pixel(14, 10), kRed);

    DrawRect(2, 2);
    EXPECT_EQ(CountPixels(kRed), 11 * 8);
}

TEST_F(AToolPaintDragTest, ThickOutlineComesOutFilled) {
    Open(40, 30);
    // Twice the thickness reaches the height of 8 rows.
    DrawRect(0, 4);
    EXPECT_EQ(CountPixels(kRed), 11 * 8);
}

TEST_F(AToolPaintDragTest, EllipseFromCentreAsCircle) {
    Open(60, 60);
    platform::Settings::WriteInt("PaintOval", "DrawStyle", 2);
    platform::Settings::WriteInt("PaintOval", "DrawFromCenter", 1);
    UseTool(33007);
    Press(30, 30);
    MoveTo(40, 35);
    Release(40, 35, Qt::ShiftModifier);
    // A circle of 11 pixels across centred on the start point.
    EXPECT_EQ(Pixel(30, 30), kRed);
    EXPECT_EQ(Pixel(25, 30), kRed);
    EXPECT_EQ(Pixel(35, 30), kRed);
    EXPECT_EQ(Pixel(30, 25), kRed);
    EXPECT_EQ(Pixel(30, 35), kRed);
    EXPECT_EQ(Pixel(36, 30), kWhite);
    EXPECT_EQ(Pixel(25, 25), kWhite);
    EXPECT_EQ(Pixel(30, 36), kWhite);
}

TEST_F(AToolPaintDragTest, ConstrainedLineSnapsAtSlopesHalfAndTwo) {
    Open(40, 40);
    host.penSize = 1;
    UseTool(33008);
    struct Case {
        int x, y;   // where the pen lifts
        int ex, ey; // where the line ends
    };
    // Slope 0.5 and 2.0 give 45 degrees; just below 0.5 is flat, above 2 upright.
    for (const Case c :
         {Case{20, 15, 20, 20}, Case{15, 20, 15, 15}, Case{30, 19, 30, 10}, Case{14, 35, 10, 35}}) {
        host.doc.SetPicture(MakeImage(40, 40));
        const CDibImage& picture = Picture();
        Press(10, 10);
        MoveTo(c.x, c.y);
        Release(c.x, c.y, Qt::ShiftModifier);
        EXPECT_EQ(picture.GetPixel(c.ex, c.ey), kRed) << c.x << "," << c.y;
        EXPECT_EQ(picture.GetPixel((10 + c.ex) / 2, (10 + c.ey) / 2), kRed) << c.x << "," << c.y;
        if (c.x != c.ex || c.y != c.ey) {
            EXPECT_NE(picture.GetPixel(c.x, c.y), kRed) << c.x << "," << c.y;
        }
    }
}

TEST_F(AToolPaintDragTest, LineEndStaysInsideAndStartOutsideDrawsNothing) {
    Open(30, 20);
    host.penSize = 1;
    UseTool(33008);
    Press(5, 5);
    MoveTo(29, 5);
    QTest::mouseRelease(Port(), Qt::LeftButton, {}, At(29, 5) + QPoint(40, 0));
    EXPECT_EQ(Pixel(29, 5), kRed);
    EXPECT_EQ(CountPixels(kRed), 25);

    host.undo.Empty();
    QTest::mousePress(Port(), Qt::LeftButton, {}, At(0, 5) - QPoint(5, 0));
    QTest::mouseRelease(Port(), Qt::LeftButton, {}, At(10, 10));
    EXPECT_EQ(CountPixels(kRed), 25);
    EXPECT_FALSE(host.undo.CanUndo(&host.doc));
}

TEST_F(AToolPaintDragTest, RubberBandIsInvertedAndLeavesThePictureAlone) {
    Open(40, 30);
    host.penSize = 1;
    UseTool(33008);
    Press(5, 5);
    MoveTo(25, 5);
    EXPECT_EQ(Screen(15, 5), qRgb(0, 0, 0));
    EXPECT_EQ(Screen(15, 10), qRgb(255, 255, 255));
    MoveTo(25, 15);
    EXPECT_EQ(Screen(15, 5), qRgb(255, 255, 255));
    EXPECT_EQ(Screen(15, 10), qRgb(0, 0, 0));
    EXPECT_EQ(CountPixels(kWhite), 40 * 30);
    Release(25, 15);
    QApplication::processEvents();
    EXPECT_EQ(Screen(15, 10), qRgb(255, 0, 0));
    EXPECT_EQ(Pixel(15, 10), kRed);

    // Esc drops a drag: no band, nothing painted.
    Press(5, 20);
    MoveTo(25, 20);
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_EQ(Screen(15, 20), qRgb(255, 255, 255));
    Release(25, 20);
    EXPECT_EQ(Pixel(15, 20), kWhite);
}

} // namespace
