#include "tools/paint/AToolPaintLine.h"
#include "tools/select/AToolSelectRect.h"
#include "tools/select/SelectToolFixture.h"

#include <QPaintEvent>
#include <vector>

namespace {

using AToolSelectTest = SelectToolTest;

ColorWord ScreenColor(const QImage& shot, QPoint at) {
    const QRgb rgb = shot.pixel(at);
    return MakeColorWord(qRed(rgb), qGreen(rgb), qBlue(rgb));
}

TEST_F(AToolSelectTest, DraggingTheFloatingSelectionMovesItAsOneUndoStep) {
    Open<AToolSelectRect>(60, 40);
    View().ZoomMagnify(2);
    Drag({10, 10}, {19, 19});
    const auto picture = DuplicateImage(host.doc.GetPicture());
    const ColorWord inside = picture->GetPixel(12, 12);

    Press({12, 12});
    EXPECT_EQ(static_cast<AToolSelect&>(View()).DragMode(), AToolSelect::kMoveFloating);
    Move({20, 15});
    Move({27, 17});
    // On screen the floating pixels follow the pen; the picture is untouched.
    const QImage during = Shot();
    EXPECT_EQ(ScreenColor(during, Screen({27, 17}) + QPoint(1, 1)), inside);
    EXPECT_EQ(ScreenColor(during, Screen({12, 12})), picture->GetPixel(12, 12));
    EXPECT_EQ(ScreenColor(during, Screen({25, 15})), picture->GetPixel(10, 10));
    EXPECT_TRUE(SamePixels(*host.doc.GetPicture(), *picture));
    EXPECT_EQ(host.doc.FloatX(), 10);
    Release({27, 17});

    EXPECT_EQ(Selection(), (ImageRect{25, 15, 35, 25}));
    EXPECT_EQ(host.undo.Kind(), 3);
    EXPECT_TRUE(host.doc.IsModified());
    EXPECT_TRUE(view.OutlineTimerActive());
    EXPECT_EQ(ScreenColor(Shot(), Screen({27, 17}) + QPoint(1, 1)), inside);
    ASSERT_TRUE(host.undo.Undo(host.doc));
    EXPECT_EQ(Selection(), (ImageRect{10, 10, 20, 20}));

    // A tap on the selection moves nothing and opens no undo step.
    host.undo.Empty();
    Press({12, 12});
    Release({12, 12});
    EXPECT_EQ(host.undo.Kind(), 0);
    EXPECT_EQ(Selection(), (ImageRect{10, 10, 20, 20}));
}

TEST_F(AToolSelectTest, PressesAreClassifiedByKeysAndPlace) {
    auto& tool = Open<AToolSelectRect>(60, 40);
    Drag({10, 10}, {19, 19});
    EXPECT_EQ(tool.ClassifyPress({12, 12}, Qt::NoModifier), AToolSelect::kMoveFloating);
    EXPECT_EQ(tool.ClassifyPress({12, 12}, Qt::ShiftModifier), AToolSelect::kAdd);
    EXPECT_EQ(tool.ClassifyPress({12, 12}, Qt::ControlModifier), AToolSelect::kSubtract);
    EXPECT_EQ(tool.ClassifyPress({12, 12}, Qt::AltModifier), AToolSelect::kMoveFloating);
    EXPECT_EQ(tool.ClassifyPress({20, 12}, Qt::NoModifier), AToolSelect::kNew);
    // The column just past the picture counts as inside, but no mask bit is set there.
    host.doc.SetFloatPosition(50, 10);
    EXPECT_EQ(tool.ClassifyPress({59, 12}, Qt::NoModifier), AToolSelect::kMoveFloating);
    EXPECT_EQ(tool.ClassifyPress({60, 12}, Qt::NoModifier), AToolSelect::kNew);
}

// Collects the regions of the viewport's paint events.
class PaintSpy : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            painted += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }
    QRegion painted;
};

TEST_F(AToolSelectTest, OutlineTickRepaintsOnlyThePixelsThatChange) {
    auto& tool = Open<AToolSelectRect>(60, 40);
    View().ZoomMagnify(2);
    Drag({10, 10}, {29, 24});
    QTest::qWait(20);
    const QImage before = Shown();
    ASSERT_EQ(before, Shot());
    PaintSpy spy;
    view.viewport()->installEventFilter(&spy);
    View().OnTimerTick();
    QTest::qWait(20);
    view.viewport()->removeEventFilter(&spy);

    // Exactly the outline pixels whose value reaches 0 or 4 at the new phase.
    const SelectionOutline& outline = tool.Outline().Points();
    const int phase = outline.Phase();
    QRegion expected;
    int outlinePixels = 0;
    outline.ForEachPixel([&](int x, int y) {
        ++outlinePixels;
        const int v = (phase + x + y) & 7;
        if (v == 0 || v == 4) {
            expected += QRect(x, y, 1, 1);
        }
    });
    ASSERT_GT(outlinePixels, 100);
    EXPECT_EQ(spy.painted, expected);
    EXPECT_LT(expected.rectCount() * 3, outlinePixels);

    // The screen changed there only, to white and black dashes.
    const QImage after = Shown();
    for (int y = 0; y < after.height(); ++y) {
        for (int x = 0; x < after.width(); ++x) {
            if (!expected.contains(QPoint(x, y))) {
                ASSERT_EQ(after.pixel(x, y), before.pixel(x, y)) << x << "," << y;
            } else {
                const int v = (phase + x + y) & 7;
                ASSERT_EQ(after.pixel(x, y) & 0xFFFFFF, v == 0 ? 0xFFFFFFu : 0u);
                ASSERT_NE(after.pixel(x, y), before.pixel(x, y));
            }
        }
    }
}

TEST_F(AToolSelectTest, OutlineFollowsScrollingAndZoom) {
    auto& tool = Open<AToolSelectRect>(400, 300);
    Drag({10, 10}, {29, 24});
    const auto firstPoint = [&tool] { return tool.Outline().Points().Entries().front(); };
    const OutlineEntry atOne = firstPoint();
    View().ZoomMagnify(2);
    View().OnTimerTick();
    EXPECT_NE(firstPoint(), atOne);
    EXPECT_EQ(firstPoint().x, Screen({10, 10}).x());
    View().ScrollToPosition(8, 6);
    View().OnTimerTick();
    EXPECT_EQ(firstPoint().x, Screen({10, 10}).x());
    EXPECT_EQ(firstPoint().y, Screen({10, 10}).y());
}

} // namespace

namespace {

TEST_F(AToolSelectTest, EscapeCancelsADragAndThePenUpThen) {
    Open<AToolSelectRect>(60, 40);
    Drag({10, 10}, {19, 19});
    host.undo.Empty();
    // A floating drag goes back.
    Press({12, 12});
    Move({30, 30});
    QTest::keyClick(&view, Qt::Key_Escape);
    Release({30, 30});
    EXPECT_EQ(Selection(), (ImageRect{10, 10, 20, 20}));
    // A new rectangle is not made, and the old selection stays with its outline.
    Press({30, 5});
    Move({40, 15});
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_FALSE(static_cast<AToolSelectBox&>(View()).Band().Visible());
    Release({40, 15});
    EXPECT_EQ(Selection(), (ImageRect{10, 10, 20, 20}));
    EXPECT_EQ(host.undo.Kind(), 0);
    EXPECT_TRUE(view.OutlineTimerActive());
}

// Painting tools keep showing the selection, and their own rubber band leaves
// the outline as it was.
TEST_F(AToolSelectTest, PaintingToolsShowTheOutlineUnderTheirRubberBand) {
    Open<AToolSelectRect>(60, 40);
    View().ZoomMagnify(2);
    Drag({10, 10}, {29, 24});
    SwitchToolView(view, &host.doc, &host, std::make_unique<AToolPaintLine>());
    View().OnTimerTick();
    QTest::qWait(20);
    auto& line = static_cast<AToolOutlineView&>(View());
    ASSERT_FALSE(line.Outline().Points().Entries().empty());
    const QImage withOutline = Shown();
    EXPECT_EQ(withOutline, Shot());

    Press({12, 12}); // inside the floating pixels, which the line paints on
    Move({27, 22});
    QTest::qWait(20);
    EXPECT_NE(Shown(), withOutline);
    QTest::keyClick(&view, Qt::Key_Escape);
    Release({27, 22});
    QTest::qWait(20);
    EXPECT_EQ(Shown(), withOutline);
}

} // namespace
