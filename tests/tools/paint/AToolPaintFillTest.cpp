#include "tools/paint/ToolTestSupport.h"
#include "platform/Settings.h"

namespace {

using AToolPaintFillTest = ToolWindowTest;

TEST_F(AToolPaintFillTest, FillsTheTappedAreaWithinTheTolerance) {
    Open(40, 30);
    CDibImage& picture = *host.doc.GetPicture();
    for (int y = 0; y < 30; ++y) {
        picture.SetPixel(20, y, kBlack);
    }
    picture.SetPixel(3, 3, 0x00E8E8E8);  // within 32 of white
    picture.SetPixel(4, 20, 0x00D0D0D0); // beyond it
    platform::Settings::WriteInt("FloodFill", "Tolerance", 32);
    UseTool(33025);
    Press(5, 5);
    Release(5, 5);
    EXPECT_EQ(Pixel(0, 0), kRed);
    EXPECT_EQ(Pixel(19, 29), kRed);
    EXPECT_EQ(Pixel(3, 3), kRed);
    EXPECT_EQ(Pixel(4, 20), 0x00D0D0D0u);
    EXPECT_EQ(Pixel(20, 10), kBlack);
    EXPECT_EQ(Pixel(21, 10), kWhite);
    EXPECT_EQ(CountPixels(kRed), 20 * 30 - 1);
    EXPECT_TRUE(host.doc.IsModified());
    ASSERT_TRUE(host.undo.Undo(host.doc));
    EXPECT_EQ(Pixel(0, 0), kWhite);
    EXPECT_EQ(Pixel(3, 3), 0x00E8E8E8u);
}

TEST_F(AToolPaintFillTest, FillOutsideThePictureDoesNothing) {
    Open(20, 20);
    UseTool(33025);
    QTest::mouseClick(Port(), Qt::LeftButton, {}, At(0, 0) - QPoint(3, 3));
    EXPECT_EQ(CountPixels(kWhite), 400);
    EXPECT_FALSE(host.undo.CanUndo(&host.doc));
}

TEST_F(AToolPaintFillTest, GradientDragRampsFromForegroundToBackground) {
    Open(50, 20);
    platform::Settings::WriteInt("Gradient", "ColorMode", 0);
    platform::Settings::WriteInt("Gradient", "Shape", 0);
    host.background = kBlue;
    UseTool(33026);
    Drag(0, 10, 49, 10);
    for (int y = 0; y < 20; ++y) {
        EXPECT_EQ(Pixel(0, y), kRed);
        EXPECT_EQ(Pixel(49, y), kBlue);
        EXPECT_EQ(Pixel(25, y), Pixel(25, 0));
    }
    const ColorWord middle = Pixel(25, 0);
    EXPECT_GT(BlueOf(middle), 100);
    EXPECT_GT(RedOf(middle), 100);
    EXPECT_EQ(GreenOf(middle), 0);
    ASSERT_TRUE(host.undo.Undo(host.doc));
    EXPECT_EQ(CountPixels(kWhite), 50 * 20);
}

TEST_F(AToolPaintFillTest, GradientShapeComesFromTheSettingsAndATapChangesNothing) {
    Open(41, 41);
    platform::Settings::WriteInt("Gradient", "Shape", 1); // radial
    host.background = kBlue;
    UseTool(33026);
    Press(20, 20);
    Release(20, 20);
    EXPECT_EQ(CountPixels(kWhite), 41 * 41);
    EXPECT_FALSE(host.undo.CanUndo(&host.doc));

    Drag(20, 20, 30, 20);
    EXPECT_EQ(Pixel(20, 20), kRed);
    EXPECT_EQ(Pixel(20, 31), kBlue);
    EXPECT_EQ(Pixel(0, 0), kBlue);
    EXPECT_EQ(Pixel(25, 20), Pixel(20, 25));
}

} // namespace
