#include "ToolTestSupport.h"
#include "dialogs/HueOptionsDialog.h"
#include "tools/paint/AToolPaintSpray.h"
#include "platform/HeapBlock.h"
#include "platform/Settings.h"
#include "platform/StringTable.h"
#include "support/ScriptedPresenter.h"

#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr ColorWord kInk = MakeColorWord(200, 30, 60);

std::unique_ptr<CDibImage> MakeTexture(int width, int height) {
    return MakeNoiseImage(width, height, 12345u);
}

class TouchUpToolTest : public ToolWindowTest {
protected:
    void SetUp() override {
        Open(36, 28);
        host.doc.SetPicture(MakeTexture(36, 28));
        host.foreground = kInk;
        host.penSize = 5;
    }
    // A stroke through picture points, pen down at the first and up at the last.
    void Stroke(const std::vector<QPoint>& points) {
        Press(points[0].x(), points[0].y());
        for (std::size_t i = 1; i < points.size(); ++i) {
            MoveTo(points[i].x(), points[i].y());
        }
        Release(points.back().x(), points.back().y());
    }
    // The smallest rectangle holding every pixel that differs from `before`.
    QRect ChangedArea(const CDibImage& before) const {
        QRect area;
        for (int y = 0; y < before.Height(); ++y) {
            for (int x = 0; x < before.Width(); ++x) {
                area |= before.GetPixel(x, y) != Pixel(x, y) ? QRect(x, y, 1, 1) : QRect();
            }
        }
        return area;
    }
};

TEST_F(TouchUpToolTest, EveryTouchUpToolChangesOnlyItsPathAndIsOneUndoStep) {
    // A horizontal stroke from (8, 12) to (26, 12) with a 5-pixel square pen
    // covers columns 6..28 and rows 10..14.
    const QRect path(QPoint(6, 10), QPoint(28, 14));
    for (int id = 33011; id <= 33024; ++id) {
        SCOPED_TRACE(tools::Label(id));
        host.doc.SetPicture(MakeTexture(36, 28));
        const auto before = DuplicateImage(&Picture());
        UseTool(id);
        Stroke({{8, 12}, {14, 12}, {20, 12}, {26, 12}});
        const QRect changed = ChangedArea(*before);
        EXPECT_FALSE(changed.isEmpty());
        EXPECT_TRUE(path.contains(changed));
        EXPECT_TRUE(host.doc.IsModified());
        const auto after = DuplicateImage(&Picture());

        ASSERT_TRUE(host.undo.Undo(host.doc));
        EXPECT_TRUE(SamePixels(Picture(), *before)) << "one undo step takes the whole stroke back";
        ASSERT_TRUE(host.undo.Redo(host.doc));
        EXPECT_TRUE(SamePixels(Picture(), *after));
    }
}

TEST_F(TouchUpToolTest, LighterGoesOneStepPerStrokeNotPerPass) {
    host.doc.SetPicture(MakeImage(36, 28));
    host.doc.GetPicture()->Clear(MakeColorWord(100, 100, 100));
    const int once = 100 + ((((255 - 100) << 4) + 128) >> 8);
    UseTool(33013);
    Stroke({{5, 5}, {25, 5}, {5, 5}, {25, 5}});
    EXPECT_EQ(Pixel(15, 5), MakeColorWord(once, once, once));
    Stroke({{5, 5}, {25, 5}});
    const int twice = once + ((((255 - once) << 4) + 128) >> 8);
    EXPECT_EQ(Pixel(15, 5), MakeColorWord(twice, twice, twice)) << "the next stroke starts afresh";
    EXPECT_EQ(Pixel(15, 20), MakeColorWord(100, 100, 100));
}

TEST_F(TouchUpToolTest, AirBrushKeepsSprayingWhileThePenRests) {
    host.doc.SetPicture(MakeImage(36, 28));
    host.doc.GetPicture()->Clear(0xFFFFFF);
    UseTool(33011);
    auto* spray = static_cast<AToolPaintSpray*>(view.View());
    Press(18, 14);
    ASSERT_TRUE(spray->SprayTimerActive());
    const ColorWord first = Pixel(18, 14);
    EXPECT_NE(first, 0xFFFFFFu);
    // The timer's own ticks, without any pen move.
    for (int waited = 0; waited < 3000 && Pixel(18, 14) == first; waited += 10) {
        QTest::qWait(10);
    }
    EXPECT_NE(Pixel(18, 14), first);
    for (int tick = 0; tick < 40; ++tick) {
        spray->OnSprayTick();
    }
    EXPECT_EQ(Pixel(18, 14), kInk) << "paint builds up to the full colour";
    EXPECT_EQ(Pixel(18, 20), 0xFFFFFFu) << "outside the spray";
    Release(18, 14);
    EXPECT_FALSE(spray->SprayTimerActive());
    ASSERT_TRUE(host.undo.Undo(host.doc));
    EXPECT_EQ(Pixel(18, 14), 0xFFFFFFu) << "the resting spray belongs to the stroke's one step";
}

TEST_F(TouchUpToolTest, TabletPressureSetsTheSprayWidth) {
    host.doc.SetPicture(MakeImage(36, 28));
    host.doc.GetPicture()->Clear(0xFFFFFF);
    host.penSize = 16;
    UseTool(33024);
    Tablet(QEvent::TabletPress, 18, 14, 0.0); // a quarter of the pen: 4 x 4 cells
    Tablet(QEvent::TabletRelease, 18, 14, 0.0);
    EXPECT_EQ(CountPixels(0xFFFFFF), 36 * 28 - 4 * 4);
}

TEST_F(TouchUpToolTest, HueOptionsChooseHueOnlyOrHueAndSaturation) {
    host.doc.SetPicture(MakeImage(36, 28));
    host.doc.GetPicture()->Clear(MakeColorWord(60, 120, 120)); // a pale cyan
    {
        HueOptionsDialog dialog;
        EXPECT_TRUE(dialog.HueOnly()->isChecked());
        dialog.HueAndSaturation()->setChecked(true);
        dialog.accept();
    }
    EXPECT_EQ(platform::Settings::ReadInt("PaintHue", "UseColor", 0), 1);
    UseTool(33017);
    Stroke({{5, 5}, {10, 5}});
    // Hue and saturation of kInk (sector 5, S = 216) at the pixel's value 120.
    EXPECT_EQ(Pixel(7, 5), MakeColorWord(120, 18, 35));

    HueOptionsDialog dialog;
    EXPECT_TRUE(dialog.HueAndSaturation()->isChecked());
    dialog.HueOnly()->setChecked(true);
    dialog.accept();
    EXPECT_EQ(platform::Settings::ReadInt("PaintHue", "UseColor", 1), 0);
    Stroke({{5, 15}, {10, 15}});
    const ColorWord hueOnly = Pixel(7, 15);
    EXPECT_EQ(RedOf(hueOnly), 120);
    EXPECT_GT(GreenOf(hueOnly), 18) << "keeps the pixel's own lower saturation";
}

TEST_F(TouchUpToolTest, AStrokeWithoutMemoryForItsCopyTellsSoAndChangesNothing) {
    ScriptedPresenter presenter;
    const auto before = DuplicateImage(&Picture());
    for (int id : {33015, 33013}) {
        UseTool(id);
        platform::HeapBlock::FailNextAllocations(1);
        Stroke({{10, 10}, {20, 10}});
        platform::HeapBlock::FailNextAllocations(0);
        EXPECT_TRUE(SamePixels(Picture(), *before));
        EXPECT_FALSE(host.undo.CanUndo(&host.doc));
    }
    EXPECT_EQ(presenter.ShownIds(), std::vector<int>(2, platform::IDS_MEMORY_NOT_ENOUGH));
}

} // namespace
