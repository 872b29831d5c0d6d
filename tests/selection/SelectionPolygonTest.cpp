#include "selection/SelectionPolygon.h"

#include "image/CommandContext.h"
#include "image/DocumentFixture.h"
#include "platform/StringTable.h"
#include "selection/SelectionMove.h"

#include <string>

namespace {

std::string Rows(const CDibImage& mask) {
    std::string text;
    for (int y = 0; y < mask.Height(); ++y) {
        for (int x = 0; x < mask.Width(); ++x) {
            text += mask.GetBit(x, y) ? '#' : '.';
        }
        text += '\n';
    }
    return text;
}

TEST(SelectionPolygon, FillsByTheEvenOddRuleWithTheEdges) {
    // A bow tie with its crossing at (3, 2): pixel centres between the odd and
    // even crossings of each row are inside, and the edges are drawn on top.
    const std::vector<OutlineEntry> bowTie{{0, 0}, {6, 4}, {6, 0}, {0, 4}};
    const auto mask = RasterizePolygon(bowTie, 0, 0, 6, 4);
    ASSERT_NE(mask, nullptr);
    EXPECT_EQ(Rows(*mask), "#....##\n"
                           "###.###\n"
                           "##.####\n"
                           "###.###\n"
                           "#.....#\n");
    // A box smaller than the path clips it.
    const auto clipped = RasterizePolygon(bowTie, 2, 1, 4, 2);
    EXPECT_EQ(Rows(*clipped), "#.#\n.##\n");
}

using SelectionMoveTest = DocumentTest;

TEST_F(SelectionMoveTest, WithoutMemoryNothingMoves) {
    CommandContext context{doc, undo};
    ASSERT_TRUE(doc.CreateFloating(2, 2, 5, 5, false));
    doc.SetFloatPosition(2, 2);
    const CDibImage* floating = doc.GetFloatImage();
    for (int allocation = 0; allocation < 2; ++allocation) {
        platform::HeapBlock::FailNextAllocations(1, allocation);
        EXPECT_EQ(MoveSelectionOutline(context, 3, 1), 0);
        EXPECT_EQ(doc.FloatX(), 2);
        EXPECT_EQ(doc.GetFloatImage(), floating);
        EXPECT_EQ(undo.Kind(), 0);
        EXPECT_TRUE(SamePixels(*doc.GetPicture(), *original));
    }
    platform::HeapBlock::FailNextAllocations(0);
    EXPECT_FALSE(presenter.Shown().empty());
    EXPECT_EQ(MoveSelectionOutline(context, 3, 1), 1);
    EXPECT_EQ(doc.FloatX(), 5);
}

} // namespace
