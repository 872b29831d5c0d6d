#include "tools/select/AToolSelectFree.h"
#include "app/AppTestSupport.h"
#include "app/ToolPalette.h"
#include "platform/HeapBlock.h"
#include "platform/StringTable.h"
#include "tools/select/AToolSelectPen.h"
#include "tools/select/SelectToolFixture.h"
#include "support/ScriptedPresenter.h"

#include <QAction>
#include <QMenu>
#include <QToolButton>

namespace {

using AToolSelectFreeTest = SelectToolTest;

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

// The pen selection inside the real main window, with the pen chosen on the
// palette as a user does.
class AToolSelectPenTest : public ::testing::Test {
protected:
    void SetUp() override {
        frame = ShowMainFrame(app, 640, 480);
        ASSERT_NE(frame, nullptr);
        ASSERT_TRUE(app.CreateNewImage({60, 40, 72, 0}));
        frame->OnToolCommand(33002);
    }
    void ChoosePen(const QString& entry) {
        for (QAction* action : frame->Palette()->PenButton()->menu()->actions()) {
            if (action->text() == entry) {
                action->trigger();
                return;
            }
        }
        ADD_FAILURE() << "no pen entry " << entry.toStdString();
    }
    QWidget* Port() { return frame->ViewWindow()->viewport(); }
    QPoint At(QPoint image) { return frame->View()->ImageToScreen(image); }
    void Stroke(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mousePress(Port(), Qt::LeftButton, modifiers, At(from));
        QTest::mouseMove(Port(), At(to));
        QTest::mouseRelease(Port(), Qt::LeftButton, modifiers, At(to));
    }
    bool Selected(int x, int y) {
        const CBriselDoc& doc = app.Document();
        const CDibImage* mask = doc.GetFloatMask();
        return mask != nullptr && mask->GetBit(x - doc.FloatX(), y - doc.FloatY()) != 0;
    }

    CBriselApp app;
    CMainFrame* frame = nullptr;
};

TEST_F(AToolSelectPenTest, StrokesPaintTheSelectionWithThePalettesPen) {
    ChoosePen("Rect");
    ChoosePen("4 pixels");
    ASSERT_EQ(frame->PenSize(), 4);
    QTest::mousePress(Port(), Qt::LeftButton, {}, At({10, 10}));
    QTest::mouseMove(Port(), At({30, 10}));
    // The outline follows the painted work mask while the pen is down.
    auto& tool = static_cast<AToolSelectPen&>(*frame->View());
    EXPECT_FALSE(tool.Outline().IsEmpty());
    EXPECT_EQ(app.Document().GetFloatMask(), nullptr);
    QTest::mouseRelease(Port(), Qt::LeftButton, {}, At({30, 10}));
    const ImageRect band = app.Document().GetFloatRect();
    EXPECT_EQ(band.bottom - band.top, 4);
    EXPECT_LE(band.left, 10);
    EXPECT_GE(band.right, 31);
    EXPECT_TRUE(Selected(20, 10));
    EXPECT_EQ(frame->UndoHistory().Kind(), 5);

    // Ctrl wipes a part out again; Shift adds a second stroke.
    Stroke({20, 5}, {20, 15}, Qt::ControlModifier);
    EXPECT_FALSE(Selected(20, 10));
    EXPECT_TRUE(Selected(12, 10));
    Stroke({10, 30}, {10, 30}, Qt::ShiftModifier);
    EXPECT_TRUE(Selected(10, 30));
    EXPECT_TRUE(Selected(12, 10));

    // A pen chosen later is used by the next stroke: a 12-pixel band.
    ChoosePen("12 pixels");
    Stroke({10, 20}, {40, 20});
    EXPECT_EQ(app.Document().GetFloatRect().bottom - app.Document().GetFloatRect().top, 12);
}

} // namespace
