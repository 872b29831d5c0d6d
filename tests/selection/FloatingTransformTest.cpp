#include "selection/FloatingTransform.h"

#include "image/CommandContext.h"
#include "image/DocumentFixture.h"
#include "ops/ImageCommands.h"
#include "selection/SelectionShapes.h"

#include <gtest/gtest.h>

namespace {

// Two documents with the same floating ellipse (a mask with unselected
// corners): one for the menu command, one for the handles.
class FloatingTransformTest : public ::testing::Test {
protected:
    struct Side {
        Side() {
            doc.SetPicture(MakeGradientImage(36, 24));
            doc.SetMask(CreateMask(36, 24, true));
            SelectEllipse(context, 4, 3, 22, 16, WandCombine::New);
        }
        CBriselDoc doc;
        CUndoHistory undo;
        CommandContext context{doc, undo, 0x0000FF, 0x00FF00};
    };
    static void ExpectSameFloating(const CBriselDoc& a, const CBriselDoc& b) {
        ASSERT_NE(a.GetFloatImage(), nullptr);
        ASSERT_NE(b.GetFloatImage(), nullptr);
        EXPECT_TRUE(SamePixels(*a.GetFloatImage(), *b.GetFloatImage()));
        EXPECT_TRUE(SamePixels(*a.GetFloatMask(), *b.GetFloatMask()));
    }

    ScriptedPresenter presenter;
    Side menu;
    Side handles;
};

} // namespace

TEST_F(FloatingTransformTest, ScaleGivesRescaleResultAtTheDraggedPlaceAsOneUndoStep) {
    const ImageRect box = handles.doc.GetFloatRect();
    ASSERT_EQ(box, (ImageRect{4, 3, 23, 17}));
    const auto pixels = DuplicateImage(handles.doc.GetFloatImage());
    ASSERT_EQ(RunRescale(menu.context, 31, 9, 0), 1);
    ASSERT_EQ(ScaleFloating(handles.context, 31, 9, -3, 12), 1);
    ExpectSameFloating(menu.doc, handles.doc);
    EXPECT_EQ(handles.doc.GetFloatRect(), (ImageRect{-3, 12, 28, 21}));
    EXPECT_TRUE(handles.doc.IsFloating());

    ASSERT_TRUE(handles.undo.Undo(handles.doc));
    EXPECT_EQ(handles.doc.GetFloatRect(), box) << "size and place come back together";
    EXPECT_TRUE(SamePixels(*handles.doc.GetFloatImage(), *pixels));
    ASSERT_TRUE(handles.undo.Redo(handles.doc));
    EXPECT_EQ(handles.doc.GetFloatRect(), (ImageRect{-3, 12, 28, 21}));
    ExpectSameFloating(menu.doc, handles.doc);
}

TEST_F(FloatingTransformTest, RotateGivesRotateResultAboutTheSameCentre) {
    for (int degrees : {30, 90, 215}) {
        SCOPED_TRACE(degrees);
        const ImageRect box = handles.doc.GetFloatRect();
        ASSERT_EQ(RunRotate(menu.context, degrees, true), 1);
        ASSERT_EQ(RotateFloating(handles.context, degrees), 1);
        ExpectSameFloating(menu.doc, handles.doc);
        const ImageRect turned = handles.doc.GetFloatRect();
        // Centres in doubled coordinates agree to within the half pixel that rounds down.
        const int dx = (box.left + box.right) - (turned.left + turned.right);
        const int dy = (box.top + box.bottom) - (turned.top + turned.bottom);
        EXPECT_TRUE(dx == 0 || dx == 1) << dx;
        EXPECT_TRUE(dy == 0 || dy == 1) << dy;
    }
}
