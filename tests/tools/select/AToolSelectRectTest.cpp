#include "tools/select/AToolSelectRect.h"
#include "tools/select/AToolSelectOval.h"
#include "tools/select/SelectToolFixture.h"

namespace {

using AToolSelectRectTest = SelectToolTest;

TEST_F(AToolSelectRectTest, NewAddAndSubtractRectangles) {
    Open<AToolSelectRect>(60, 40);
    Drag({10, 5}, {20, 12});
    EXPECT_EQ(Selection(), (ImageRect{10, 5, 21, 13}));
    EXPECT_TRUE(Selected(10, 5));
    EXPECT_TRUE(Selected(20, 12));
    EXPECT_EQ(host.undo.Kind(), 5);
    EXPECT_TRUE(view.OutlineTimerActive());

    // Shift adds: one floating selection over both rectangles' bounds.
    Drag({30, 20}, {35, 25}, Qt::ShiftModifier);
    EXPECT_EQ(Selection(), (ImageRect{10, 5, 36, 26}));
    EXPECT_TRUE(Selected(12, 6));
    EXPECT_TRUE(Selected(33, 22));
    EXPECT_FALSE(Selected(30, 6));

    // Ctrl subtracts a band through the first rectangle.
    Drag({10, 8}, {20, 9}, Qt::ControlModifier);
    EXPECT_FALSE(Selected(15, 8));
    EXPECT_TRUE(Selected(15, 7));
    EXPECT_TRUE(Selected(15, 10));

    // Subtracting everything leaves no selection, and the outline stops.
    Drag({0, 0}, {59, 39}, Qt::ControlModifier);
    EXPECT_EQ(host.doc.GetFloatMask(), nullptr);
    EXPECT_FALSE(view.OutlineTimerActive());
}

TEST_F(AToolSelectRectTest, NewSelectionStampsTheMovedOneAndATapEndsIt) {
    Open<AToolSelectRect>(60, 40);
    Drag({2, 2}, {5, 5});
    const ColorWord corner = host.doc.GetPicture()->GetPixel(2, 2);
    host.doc.SetFloatPosition(40, 30);

    // A press outside the selection starts a new one; the old is stamped.
    Drag({10, 10}, {12, 12});
    EXPECT_EQ(host.doc.GetPicture()->GetPixel(40, 30), corner);
    EXPECT_EQ(Selection(), (ImageRect{10, 10, 13, 13}));

    // A drag that ends where it started leaves no selection; undo brings it back.
    Press({30, 5});
    Release({30, 5});
    EXPECT_EQ(host.doc.GetFloatMask(), nullptr);
    EXPECT_FALSE(view.OutlineTimerActive());
    ASSERT_TRUE(host.undo.Undo(host.doc));
    EXPECT_EQ(Selection(), (ImageRect{10, 10, 13, 13}));
}

TEST_F(AToolSelectRectTest, DragPastTheEdgeSelectsUpToIt) {
    Open<AToolSelectRect>(60, 40);
    // Beyond the right and bottom edges, into the gap around the picture.
    Drag({50, 30}, {70, 52});
    EXPECT_EQ(Selection(), (ImageRect{50, 30, 60, 40}));
    // And from beside the picture inwards, at zoom 2.
    View().ZoomMagnify(2);
    const QPoint outside = Screen({0, 0}) - QPoint(6, 6);
    QTest::mousePress(view.viewport(), Qt::LeftButton, Qt::NoModifier, outside);
    Move({3, 4});
    Release({3, 4});
    EXPECT_EQ(Selection(), (ImageRect{0, 0, 4, 5}));
}

TEST_F(AToolSelectRectTest, AltKeepsTheBoxSquare) {
    Open<AToolSelectRect>(60, 40);
    Drag({20, 20}, {30, 24}, Qt::AltModifier);
    EXPECT_EQ(Selection(), (ImageRect{20, 20, 25, 25}));
    // Up and to the left: the square follows the drag's quadrant.
    Drag({40, 30}, {32, 24}, Qt::AltModifier);
    EXPECT_EQ(Selection(), (ImageRect{34, 24, 41, 31}));
}

TEST_F(AToolSelectRectTest, EllipseSelectsAddsAndSubtractsItsInscribedShape) {
    Open<AToolSelectOval>(60, 40);
    Drag({10, 10}, {30, 30});
    EXPECT_EQ(Selection(), (ImageRect{10, 10, 31, 31}));
    EXPECT_TRUE(Selected(20, 20));
    EXPECT_FALSE(Selected(10, 10));
    EXPECT_FALSE(Selected(30, 30));
    // Adding a rectangle: one selection over both shapes.
    Drag({40, 2}, {45, 6}, Qt::ShiftModifier);
    EXPECT_EQ(Selection(), (ImageRect{10, 2, 46, 31}));
    EXPECT_TRUE(Selected(20, 20));
    EXPECT_TRUE(Selected(42, 4));
    // Ctrl subtracts an ellipse, not its box: the box's corners stay selected.
    Drag({15, 15}, {25, 25}, Qt::ControlModifier);
    EXPECT_FALSE(Selected(20, 20));
    EXPECT_FALSE(Selected(20, 15));
    EXPECT_TRUE(Selected(15, 15));
    EXPECT_TRUE(Selected(25, 25));
    EXPECT_TRUE(Selected(42, 4));
    EXPECT_EQ(host.undo.Kind(), 5);
    // A click without a drag removes the selection; undo brings it back.
    const ImageRect before = Selection();
    Press({55, 35});
    Release({55, 35});
    EXPECT_EQ(host.doc.GetFloatMask(), nullptr);
    EXPECT_FALSE(view.OutlineTimerActive());
    ASSERT_TRUE(host.undo.Undo(host.doc));
    EXPECT_EQ(Selection(), before);
    EXPECT_FALSE(Selected(20, 20));
}

TEST_F(AToolSelectRectTest, RubberBandInvertsThePictureAndLeavesNoTrace) {
    for (const bool ellipse : {false, true}) {
        if (ellipse) {
            Open<AToolSelectOval>(60, 40);
        } else {
            Open<AToolSelectRect>(60, 40);
        }
        View().ZoomMagnify(2);
        const QImage before = Shot();
        Press({5, 5});
        Move({25, 15});
        const QImage during = Shot();
        const auto& band = static_cast<AToolSelectBox&>(View()).Band();
        ASSERT_TRUE(band.Visible());
        int inverted = 0;
        for (int y = 0; y < before.height(); ++y) {
            for (int x = 0; x < before.width(); ++x) {
                const QRgb was = before.pixel(x, y) & 0xFFFFFF;
                const QRgb now = during.pixel(x, y) & 0xFFFFFF;
                if (band.Pixels().contains(QPoint(x, y))) {
                    ASSERT_EQ(now, ~was & 0xFFFFFF) << x << "," << y;
                    ++inverted;
                } else {
                    ASSERT_EQ(now, was) << x << "," << y;
                }
            }
        }
        EXPECT_GT(inverted, 40);
        // Taking the band away (a drag back to the start) restores the screen exactly.
        Move({5, 5});
        Move({25, 15});
        Move({5, 5});
        EXPECT_TRUE(band.Visible());
        Release({5, 5});
        EXPECT_EQ(Shot(), before);
    }
}

} // namespace
