#include "selection/AToolSelectFree.h"
#include "platform/HeapBlock.h"
#include "platform/Settings.h"
#include "platform/StringTable.h"
#include "selection/AToolSelectPen.h"
#include "selection/SelectToolFixture.h"
#include "support/ScriptedPresenter.h"

namespace {

using AToolSelectFreeTest = SelectToolTest;
using AToolSelectPenTest = SelectToolTest;

TEST_F(AToolSelectFreeTest, PathBecomesNewAddedOrSubtractedSelection) {
    Open<AToolSelectFree>(60, 40);
    Trace({{10, 10}, {20, 10}, {20, 20}, {10, 20}});
    EXPECT_EQ(Selection(), (ImageRect{10, 10, 21, 21}));
    EXPECT_TRUE(Selected(15, 15));
    EXPECT_TRUE(Selected(20, 20));
    EXPECT_EQ(host.undo.Kind(), 5);
    EXPECT_TRUE(view.OutlineTimerActive());

    // A triangle: inside and the edges, not the corner beyond the diagonal.
    Trace({{30, 5}, {50, 5}, {30, 25}}, Qt::ShiftModifier);
    EXPECT_EQ(Selection(), (ImageRect{10, 5, 51, 26}));
    EXPECT_TRUE(Selected(32, 7));
    EXPECT_TRUE(Selected(40, 15));
    EXPECT_FALSE(Selected(45, 20));
    EXPECT_TRUE(Selected(15, 15));

    Trace({{12, 12}, {50, 12}, {50, 30}, {12, 30}}, Qt::ControlModifier);
    EXPECT_FALSE(Selected(15, 15));
    EXPECT_FALSE(Selected(32, 12));
    EXPECT_TRUE(Selected(32, 7));
}

TEST_F(AToolSelectFreeTest, PathsLeavingThePictureAreClippedAndTapsEndTheSelection) {
    Open<AToolSelectFree>(60, 40);
    Trace({{50, 30}, {70, 30}, {70, 50}, {50, 50}});
    EXPECT_EQ(Selection(), (ImageRect{50, 30, 60, 40}));
    EXPECT_TRUE(Selected(59, 39));

    // Presses beside the picture do nothing.
    host.undo.Empty();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, Screen({0, 0}) - QPoint(4, 4));
    EXPECT_EQ(host.undo.Kind(), 0);
    // A single point ends the selection.
    Tap({5, 5});
    EXPECT_EQ(host.doc.GetFloatMask(), nullptr);
    ASSERT_TRUE(host.undo.Undo(host.doc));
    EXPECT_EQ(Selection(), (ImageRect{50, 30, 60, 40}));
}

TEST_F(AToolSelectFreeTest, NoMemoryForThePolygonLeavesTheSelection) {
    Open<AToolSelectFree>(60, 40);
    Trace({{10, 10}, {20, 10}, {20, 20}});
    const ImageRect before = Selection();
    ScriptedPresenter presenter;
    Press({30, 30});
    Move({40, 30});
    Move({40, 35});
    platform::HeapBlock::FailNextAllocations(1);
    Release({40, 35});
    platform::HeapBlock::FailNextAllocations(0);
    EXPECT_EQ(presenter.ShownIds(), std::vector<int>{platform::IDS_MEMORY_NOT_ENOUGH});
    EXPECT_EQ(Selection(), before);
}

TEST_F(AToolSelectPenTest, StrokesPaintTheSelectionWithThePen) {
    platform::Settings::WriteInt("ToolSection", "PenSize", 4);
    platform::Settings::WriteInt("ToolSection", "PenShape", 1);
    Open<AToolSelectPen>(60, 40);
    Press({10, 10});
    Move({30, 10});
    // The outline follows the painted work mask while the pen is down.
    auto& tool = static_cast<AToolSelectPen&>(View());
    EXPECT_FALSE(tool.Outline().IsEmpty());
    EXPECT_EQ(host.doc.GetFloatMask(), nullptr);
    Release({30, 10});
    const ImageRect band = Selection();
    EXPECT_EQ(band.bottom - band.top, 4);
    EXPECT_LE(band.left, 10);
    EXPECT_GE(band.right, 31);
    EXPECT_TRUE(Selected(20, 10));
    EXPECT_EQ(host.undo.Kind(), 5);

    // Ctrl wipes a part out again; Shift adds a second stroke.
    Press({20, 5}, Qt::ControlModifier);
    Move({20, 15}, Qt::ControlModifier);
    Release({20, 15}, Qt::ControlModifier);
    EXPECT_FALSE(Selected(20, 10));
    EXPECT_TRUE(Selected(12, 10));
    Press({10, 30}, Qt::ShiftModifier);
    Release({10, 30}, Qt::ShiftModifier);
    EXPECT_TRUE(Selected(10, 30));
    EXPECT_TRUE(Selected(12, 10));
}

} // namespace
