#include "tools/select/FloatingHandles.h"
#include "image/CommandContext.h"
#include "ops/ImageCommands.h"
#include "selection/SelectionShapes.h"
#include "tools/paint/AToolPaintMove.h"
#include "tools/select/AToolSelectMove.h"
#include "tools/select/AToolSelectRect.h"
#include "tools/select/SelectToolFixture.h"

#include <QCursor>

namespace {

using Handles = FloatingHandles;

class FloatingHandlesTest : public SelectToolTest {
protected:
    // A 100 x 80 picture with a floating ellipse in 20..59 x 16..45.
    template <typename Tool = AToolSelectRect> Tool& OpenWithFloating() {
        auto& tool = Open<Tool>(100, 80, QSize(320, 260));
        CommandContext context = host.EditingContext();
        SelectEllipse(context, 20, 16, 59, 45, WandCombine::New);
        twin.SetPicture(DuplicateImage(host.doc.GetPicture()));
        twin.SetMask(CreateMask(100, 80, true));
        SelectEllipse(twinContext, 20, 16, 59, 45, WandCombine::New);
        return tool;
    }
    QPoint HandlePoint(int handle) { return Handles(FloatingHandleDrag::ScreenBox(View())).Centre(handle); }
    void PressAt(QPoint client, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mousePress(view.viewport(), Qt::LeftButton, modifiers, client);
    }
    void MoveTo(QPoint client, Qt::KeyboardModifiers modifiers = {}) {
        QMouseEvent move(QEvent::MouseMove, client, view.viewport()->mapToGlobal(client), Qt::NoButton,
                         Qt::LeftButton, modifiers);
        QApplication::sendEvent(view.viewport(), &move);
    }
    void ReleaseAt(QPoint client, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, modifiers, client);
    }
    void ExpectSameAsTwin() {
        ASSERT_NE(host.doc.GetFloatImage(), nullptr);
        EXPECT_TRUE(SamePixels(*host.doc.GetFloatImage(), *twin.GetFloatImage()));
        EXPECT_TRUE(SamePixels(*host.doc.GetFloatMask(), *twin.GetFloatMask()));
    }

    CBriselDoc twin;
    CUndoHistory twinUndo;
    CommandContext twinContext{twin, twinUndo, 0, 0xFFFFFF};
};

} // namespace

TEST_F(FloatingHandlesTest, HandlesKeepTheirScreenSizeAndAreFoundAtEveryZoom) {
    OpenWithFloating();
    for (int zoom : {-4, 1, 8}) {
        SCOPED_TRACE(zoom);
        zoom < 0 ? View().ZoomReduce(-zoom) : zoom == 1 ? View().ZoomActual() : View().ZoomMagnify(zoom);
        const QRect box = FloatingHandleDrag::ScreenBox(View());
        const int scale = zoom < 0 ? 1 : zoom;
        EXPECT_NEAR(box.width(), zoom < 0 ? 40 / 4 : 40 * scale, 1);
        const Handles handles(box);
        for (int handle = Handles::kTopLeft; handle < Handles::kCount; ++handle) {
            const QPoint centre = handles.Centre(handle);
            EXPECT_EQ(FloatingHandleDrag::HandleAt(View(), centre), handle);
            EXPECT_EQ(handles.Square(handle).size(), QSize(Handles::kSize, Handles::kSize));
            EXPECT_FALSE(box.contains(centre)) << "handles lie outside the box";
        }
        EXPECT_EQ(FloatingHandleDrag::HandleAt(View(), box.center()), Handles::kNone);
        const QPoint beside = handles.Centre(Handles::kRight) + QPoint(Handles::kSize / 2 + 1, 0);
        EXPECT_EQ(FloatingHandleDrag::HandleAt(View(), beside), Handles::kNone);
    }
}

TEST_F(FloatingHandlesTest, CornerDragGivesRescaleResultAsOneUndoStepAndShowsTheSize) {
    auto& tool = OpenWithFloating();
    const QPoint from = HandlePoint(Handles::kBottomRight);
    PressAt(from);
    EXPECT_EQ(tool.DragMode(), AToolSelect::kHandle);
    MoveTo(from + QPoint(15, 5));
    MoveTo(from + QPoint(20, 10));
    EXPECT_EQ(host.status, "60 x 40 pixels");
    EXPECT_EQ(host.doc.GetFloatImage()->Width(), 40) << "nothing changes before the release";
    ReleaseAt(from + QPoint(20, 10));
    EXPECT_TRUE(host.status.empty());

    ASSERT_EQ(RunRescale(twinContext, 60, 40, 0), 1);
    ExpectSameAsTwin();
    EXPECT_EQ(host.doc.GetFloatRect(), (ImageRect{20, 16, 80, 56}));
    EXPECT_TRUE(host.doc.IsFloating());
    ASSERT_TRUE(host.undo.Undo(host.doc));
    EXPECT_EQ(host.doc.GetFloatRect(), (ImageRect{20, 16, 60, 46}));
}

TEST_F(FloatingHandlesTest, TopLeftDragWithShiftKeepsProportionsAndTheOppositeCorner) {
    OpenWithFloating();
    const QPoint from = HandlePoint(Handles::kTopLeft);
    PressAt(from, Qt::ShiftModifier);
    MoveTo(from + QPoint(-20, -2), Qt::ShiftModifier);
    ReleaseAt(from + QPoint(-20, -2), Qt::ShiftModifier);
    // Width 40 -> 60 is the larger change: the height follows, 30 -> 45.
    ASSERT_EQ(RunRescale(twinContext, 60, 45, 0), 1);
    ExpectSameAsTwin();
    EXPECT_EQ(host.doc.GetFloatRect(), (ImageRect{0, 1, 60, 46}));
}

TEST_F(FloatingHandlesTest, RotationDragGivesRotateResultAboutTheCentreAndSnapsWithShift) {
    OpenWithFloating();
    const QRect box = FloatingHandleDrag::ScreenBox(View());
    const QPoint centre = box.center();
    const QPoint from = HandlePoint(Handles::kRotate);
    PressAt(from);
    // Straight up to a little above the right: about 85 degrees clockwise.
    const QPoint to = centre + QPoint(80, -10);
    MoveTo(to, Qt::ShiftModifier);
    EXPECT_EQ(host.status, "90 degrees") << "Shift snaps to 15 degrees";
    MoveTo(to);
    const int degrees = static_cast<AToolSelect&>(View()).HandleDrag().Degrees();
    EXPECT_EQ(host.status, std::to_string(degrees) + " degrees");
    ReleaseAt(to);
    EXPECT_GE(degrees, 82);
    EXPECT_LE(degrees, 86);

    const ImageRect before = twin.GetFloatRect();
    ASSERT_EQ(RunRotate(twinContext, degrees, true), 1);
    ExpectSameAsTwin();
    const ImageRect after = host.doc.GetFloatRect();
    EXPECT_LE(std::abs((after.left + after.right) - (before.left + before.right)), 1);
    EXPECT_LE(std::abs((after.top + after.bottom) - (before.top + before.bottom)), 1);
    ASSERT_TRUE(host.undo.Undo(host.doc));
    EXPECT_EQ(host.doc.GetFloatRect(), before);
}

TEST_F(FloatingHandlesTest, EscCancelsTheDragEnterPutsTheSelectionDown) {
    OpenWithFloating();
    const QPoint from = HandlePoint(Handles::kRight);
    PressAt(from);
    MoveTo(from + QPoint(30, 0));
    QTest::keyClick(&view, Qt::Key_Escape);
    ReleaseAt(from + QPoint(30, 0));
    EXPECT_EQ(host.doc.GetFloatRect(), (ImageRect{20, 16, 60, 46}));
    EXPECT_TRUE(host.status.empty());

    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(host.doc.GetFloatMask(), nullptr);
}

TEST_F(FloatingHandlesTest, TheMoveSelectionToolOffersTheSameHandles) {
    OpenWithFloating<AToolSelectMove>();
    const QPoint from = HandlePoint(Handles::kBottom);
    PressAt(from);
    MoveTo(from + QPoint(0, 12));
    EXPECT_EQ(host.status, "40 x 42 pixels");
    ReleaseAt(from + QPoint(0, 12));
    ASSERT_EQ(RunRescale(twinContext, 40, 42, 0), 1);
    ExpectSameAsTwin();
    EXPECT_EQ(host.doc.GetFloatRect(), (ImageRect{20, 16, 60, 58}));

    QTest::keyClick(&view, Qt::Key_Enter);
    EXPECT_EQ(host.doc.GetFloatMask(), nullptr);
}

TEST_F(FloatingHandlesTest, TheMovePictureToolOffersTheHandlesBesidePanning) {
    OpenWithFloating<AToolPaintMove>();
    QTest::mouseMove(view.viewport(), HandlePoint(Handles::kRight));
    EXPECT_EQ(view.viewport()->cursor().shape(), Qt::SizeHorCursor);
    QTest::mouseMove(view.viewport(), FloatingHandleDrag::ScreenBox(View()).center());
    EXPECT_EQ(view.viewport()->cursor().shape(), Qt::OpenHandCursor) << "elsewhere it pans";

    const QPoint centre = FloatingHandleDrag::ScreenBox(View()).center();
    const QPoint from = HandlePoint(Handles::kRotate);
    PressAt(from);
    MoveTo(centre + QPoint(-70, 4), Qt::ShiftModifier);
    ReleaseAt(centre + QPoint(-70, 4), Qt::ShiftModifier);
    EXPECT_EQ(host.status, "");
    ASSERT_EQ(RunRotate(twinContext, 270, true), 1);
    ExpectSameAsTwin();
}

TEST_F(FloatingHandlesTest, TheCursorShowsWhatAHandleDoes) {
    OpenWithFloating();
    const auto cursorOver = [&](QPoint client) {
        QTest::mouseMove(view.viewport(), client);
        return view.viewport()->cursor().shape();
    };
    EXPECT_EQ(cursorOver(HandlePoint(Handles::kTopLeft)), Qt::SizeFDiagCursor);
    EXPECT_EQ(cursorOver(HandlePoint(Handles::kBottom)), Qt::SizeVerCursor);
    EXPECT_EQ(cursorOver(HandlePoint(Handles::kRotate)), Qt::OpenHandCursor);
    EXPECT_EQ(cursorOver(FloatingHandleDrag::ScreenBox(View()).center()), Qt::ArrowCursor);
}

TEST(FloatingHandlesGeometry, ScalingAndAnglesFollowTheirConstraints) {
    const QRect box(10, 10, 20, 10);
    EXPECT_EQ(Handles::Scaled(box, Handles::kRight, {5, 7}, false), QRect(10, 10, 25, 10))
        << "an edge moves one side";
    EXPECT_EQ(Handles::Scaled(box, Handles::kTop, {5, -4}, true), QRect(10, 6, 20, 14))
        << "Shift leaves edges free";
    EXPECT_EQ(Handles::Scaled(box, Handles::kBottomRight, {20, 1}, true), QRect(10, 10, 40, 20));
    EXPECT_EQ(Handles::Scaled(box, Handles::kLeft, {50, 0}, false), QRect(29, 10, 1, 10))
        << "at least 1 pixel";
    const QPointF centre(0, 0);
    EXPECT_EQ(Handles::Degrees(centre, {0, -10}, {10, 0}, false), 90) << "clockwise on screen";
    EXPECT_EQ(Handles::Degrees(centre, {0, -10}, {-10, 0}, false), 270);
    EXPECT_EQ(Handles::Degrees(centre, {0, -10}, {10, -10}, true), 45);
    EXPECT_EQ(Handles::Degrees(centre, {0, -10}, {3, -10}, true), 15) << "17 degrees snap to 15";
    EXPECT_EQ(Handles::Degrees(centre, {0, -10}, {3, -10}, false), 17);
}
