#include "tools/select/AToolSelectMove.h"
#include "tools/select/AToolSelectRect.h"
#include "tools/select/SelectToolFixture.h"

namespace {

using AToolSelectMoveTest = SelectToolTest;

TEST_F(AToolSelectMoveTest, MovesTheOutlineAndPicksUpThePixelsThere) {
    Open<AToolSelectRect>(60, 40);
    Drag({10, 10}, {14, 13});
    // The floating copy differs from the picture under it, so that the stamp shows.
    host.doc.GetFloatImage()->SetPixel(0, 0, MakeColorWord(1, 2, 3));
    const auto before = DuplicateImage(host.doc.GetPicture());
    const CDibImage* floatBefore = host.doc.GetFloatImage();
    SwitchToolView(view, &host.doc, &host, std::make_unique<AToolSelectMove>());
    auto& tool = static_cast<AToolSelectMove&>(View());

    Press({11, 11});
    ASSERT_TRUE(tool.Dragging());
    Move({21, 31});
    EXPECT_TRUE(SamePixels(*host.doc.GetPicture(), *before));
    Release({21, 31});

    EXPECT_EQ(Selection(), (ImageRect{20, 30, 25, 34}));
    EXPECT_EQ(host.undo.Kind(), 8);
    // Stamped at the old place, and the new floating pixels are the picture's.
    EXPECT_EQ(host.doc.GetPicture()->GetPixel(10, 10), MakeColorWord(1, 2, 3));
    EXPECT_EQ(host.doc.GetFloatImage()->GetPixel(4, 3), before->GetPixel(24, 33));
    EXPECT_TRUE(view.OutlineTimerActive());

    ASSERT_TRUE(host.undo.Undo(host.doc));
    EXPECT_EQ(Selection(), (ImageRect{10, 10, 15, 14}));
    EXPECT_EQ(host.doc.GetFloatImage(), floatBefore);
    EXPECT_TRUE(SamePixels(*host.doc.GetPicture(), *before));
}

TEST_F(AToolSelectMoveTest, PressesBesideTheSelectionAndTapsChangeNothing) {
    Open<AToolSelectRect>(60, 40);
    Drag({10, 10}, {14, 13});
    SwitchToolView(view, &host.doc, &host, std::make_unique<AToolSelectMove>());
    host.undo.Empty();
    Drag({30, 30}, {40, 35});
    Press({12, 12});
    Release({12, 12});
    EXPECT_EQ(Selection(), (ImageRect{10, 10, 15, 14}));
    EXPECT_EQ(host.undo.Kind(), 0);
}

} // namespace
