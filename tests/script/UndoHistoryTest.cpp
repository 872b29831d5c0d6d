#include "image/CommandContext.h"
#include "image/DocumentFixture.h"
#include "image/RegionPixels.h"
#include "image/TilePixels.h"
#include "ops/ImageCommands.h"
#include "script/EngineOperations.h"
#include "selection/SelectionMove.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

// Everything an undo step may change: the picture, the selection mask, the
// floating pixels, their mask and position, the resolution.
struct DocState {
    std::unique_ptr<CDibImage> picture, mask, floatImage, floatMask;
    int x = 0, y = 0, dpi = 0;
};

bool Same(const CDibImage* a, const CDibImage* b) {
    return a == nullptr || b == nullptr ? a == b : SamePixels(*a, *b);
}

class UndoHistoryTest : public DocumentTest {
protected:
    void SetUp() override {
        DocumentTest::SetUp();
        doc.SetPicture(MakeGradientImage(40, 30));
        doc.SetMask(CreateMask(40, 30, true));
    }

    // Runs a command as the frame does: named first, so that the step before
    // it is finished, then run.
    void Do(const std::string& word) {
        EngineStep step;
        std::string error;
        ASSERT_TRUE(ParseEngineStep(word, step, error)) << error;
        ASSERT_EQ(RunEngineStep(context, options, step), 1) << word;
    }
    void Do(const char* name, const std::function<int()>& command) {
        undo.BeginCommand(doc, name);
        ASSERT_EQ(command(), 1) << name;
    }

    DocState Capture() const {
        DocState s;
        s.picture = DuplicateImage(doc.GetPicture());
        s.mask = DuplicateImage(doc.GetMask() == doc.GetFloatMask() ? nullptr : doc.GetMask());
        s.floatImage = DuplicateImage(doc.GetFloatImage());
        s.floatMask = DuplicateImage(doc.GetFloatMask());
        s.x = doc.FloatX();
        s.y = doc.FloatY();
        s.dpi = doc.GetPicture()->DpiX();
        return s;
    }
    void ExpectState(const DocState& s, const std::string& where) const {
        EXPECT_TRUE(Same(doc.GetPicture(), s.picture.get())) << where << ": picture";
        EXPECT_TRUE(Same(doc.GetFloatImage(), s.floatImage.get())) << where << ": floating pixels";
        EXPECT_TRUE(Same(doc.GetFloatMask(), s.floatMask.get())) << where << ": floating mask";
        if (!doc.GetFloatMask()) {
            EXPECT_TRUE(Same(doc.GetMask(), s.mask.get())) << where << ": selection mask";
        }
        EXPECT_EQ(doc.FloatX(), s.x) << where;
        EXPECT_EQ(doc.FloatY(), s.y) << where;
        EXPECT_EQ(doc.GetPicture()->DpiX(), s.dpi) << where;
    }

    // Undo back to the first state, redo to the last, undo back again; each
    // state must come back exactly.
    void WalkBackAndForth(const std::vector<DocState>& states) {
        for (int pass = 0; pass < 2; ++pass) {
            for (std::size_t i = states.size() - 1; i > 0; --i) {
                ASSERT_TRUE(undo.Undo(doc)) << "undo to " << i - 1;
                ExpectState(states[i - 1], "after undo to state " + std::to_string(i - 1));
            }
            EXPECT_FALSE(undo.CanUndo(&doc));
            if (pass == 1) {
                break;
            }
            for (std::size_t i = 1; i < states.size(); ++i) {
                ASSERT_TRUE(undo.Redo(doc)) << "redo to " << i;
                ExpectState(states[i], "after redo to state " + std::to_string(i));
            }
            EXPECT_FALSE(undo.CanRedo(&doc));
        }
    }

    CommandContext context{doc, undo, 0x0000FF, 0x00FF00};
    EngineOptions options;
};

TEST_F(UndoHistoryTest, EveryKindOfStepWalksBackAndForthExactly) {
    std::vector<DocState> states;
    states.push_back(Capture());
    auto then = [&](auto&&... run) {
        (run(), ...);
        states.push_back(Capture());
    };
    then([&] { Do("pen=2,2;30,5;10,20"); });                        // 1, painted pixels
    then([&] { Do("select-rect=5,5,20,15"); });                     // 5
    then([&] { Do("pen=6,6;18,14"); });                             // 1 on the floating pixels
    then([&] { Do("move-floating=7,3"); });                         // 3
    then([&] { Do("fill-selection=black"); });                      // 1, a whole copy reduced to tiles
    then([&] { Do("Rotate Right", [&] { return RunGeometryCommand(context, kRotateRight); }); }); // 10
    then([&] { Do("Invert", [&] { return RunImageCommand(context, kInvert); }); });              // 1, handed over
    then([&] { Do("select-none"); });                               // 7
    then([&] { Do("select-ellipse=3,3,25,20"); });                  // 5
    then([&] { Do("Move Selection", [&] { return MoveSelectionOutline(context, 4, -2); }); });   // 8
    then([&] { Do("discard-floating"); });                          // 6
    then([&] { Do("Rescale", [&] { return RunRescale(context, 40, 30, 150); }); });             // 2
    then([&] { Do("line=0,29,39,0"); });                            // 1, a line
    then([&] { Do("fill-selection=white"); });                      // 1 without a selection
    ASSERT_EQ(undo.StepCount(), 14);
    WalkBackAndForth(states);
}

TEST_F(UndoHistoryTest, ANewChangePutFloatingAndCropEndTheRedoChain) {
    const DocState start = Capture();
    Do("pen=2,2;20,2");
    Do("pen=2,8;20,8");
    ASSERT_TRUE(undo.Undo(doc));
    Do("pen=2,14;20,14");
    EXPECT_FALSE(undo.CanRedo(&doc)) << "a new change cuts the undone step";
    EXPECT_EQ(undo.StepCount(), 2);

    Do("select-rect=4,4,12,12");
    const DocState selected = Capture();
    Do("put-floating");
    Do("pen=5,5;30,25");
    ASSERT_TRUE(undo.Undo(doc));
    ASSERT_TRUE(undo.Undo(doc)); // Put Floating
    ExpectState(selected, "put floating undone");
    EXPECT_FALSE(undo.CanRedo(&doc)) << "Put Floating cannot be redone, nor what came after";
    EXPECT_EQ(undo.StepCount(), 3);

    Do("crop");
    ASSERT_TRUE(undo.Undo(doc));
    ExpectState(selected, "crop undone");
    EXPECT_FALSE(undo.CanRedo(&doc));
    while (undo.Undo(doc)) {
    }
    ExpectState(start, "everything undone");
}

TEST_F(UndoHistoryTest, OneStepBehavesAsTheSingleRecord) {
    undo.SetLimits({1, std::size_t{1} << 30});
    Do("pen=2,2;20,2");
    const DocState first = Capture();
    Do("pen=2,8;20,8");
    const DocState second = Capture();
    ASSERT_TRUE(undo.Undo(doc));
    ExpectState(first, "undo");
    EXPECT_FALSE(undo.CanUndo(&doc));
    ASSERT_TRUE(undo.Redo(doc));
    ExpectState(second, "redo");
    EXPECT_FALSE(undo.Redo(doc));
    ASSERT_TRUE(undo.Undo(doc));
    ExpectState(first, "undo again");
}

TEST_F(UndoHistoryTest, TheOldestStepsGoFirstWhenStepsOrMemoryRunOut) {
    undo.SetLimits({3, std::size_t{1} << 30});
    std::vector<DocState> states;
    for (int i = 0; i < 5; ++i) {
        Do("pen=2," + std::to_string(2 + 5 * i) + ";35," + std::to_string(2 + 5 * i));
        states.push_back(Capture());
    }
    EXPECT_EQ(undo.StepCount(), 3);
    while (undo.Undo(doc)) {
    }
    ExpectState(states[1], "the three newest strokes undone");

    // Memory: a budget that holds about two of these steps keeps two, and the
    // newest step stays even when it alone is over the budget.
    undo.Empty();
    undo.SetLimits({100, std::size_t{1} << 30});
    Do("pen=2,14;35,14");
    undo.BeginCommand(doc, "");
    const std::size_t oneStep = undo.Bytes();
    undo.SetLimits({100, oneStep * 2 + oneStep / 2});
    for (int i = 0; i < 4; ++i) {
        Do("pen=2," + std::to_string(8 + 5 * i) + ";35," + std::to_string(8 + 5 * i));
    }
    undo.BeginCommand(doc, "");
    EXPECT_EQ(undo.StepCount(), 2);
    undo.SetLimits({100, 1});
    EXPECT_EQ(undo.StepCount(), 1);
    EXPECT_TRUE(undo.CanUndo(&doc));
}

TEST_F(UndoHistoryTest, AFailedSnapshotWarnsRunsTheCommandAndEmptiesTheHistory) {
    Do("pen=2,2;20,2");
    Do("select-rect=4,4,12,12");
    undo.BeginCommand(doc, "Fill"); // finishes the selection step first
    platform::HeapBlock::FailNextAllocations(1);
    Do("fill-selection=black"); // the whole copy of the floating pixels fails
    EXPECT_EQ(presenter.ShownIds(), std::vector<int>{32});
    EXPECT_EQ(doc.GetFloatImage()->GetPixel(3, 3), 0u) << "the command still ran";
    EXPECT_EQ(undo.StepCount(), 0) << "older steps no longer fit the picture";
    EXPECT_FALSE(undo.Undo(doc));

    const DocState filled = Capture();
    Do("pen=5,5;12,12");
    ASSERT_TRUE(undo.Undo(doc));
    ExpectState(filled, "the history works on from there");

    // Memory running out in the middle of a painting step.
    ASSERT_EQ(undo.RecordRegionWithWarning(doc), 1);
    platform::HeapBlock::FailNextAllocations(1);
    EXPECT_FALSE(undo.SaveRegion(doc, 0, 0, 10, 10));
    EXPECT_EQ(presenter.ShownIds(), (std::vector<int>{32, 32}));
    EXPECT_EQ(undo.StepCount(), 0);
    EXPECT_FALSE(undo.SaveRegion(doc, 0, 0, 10, 10)) << "the painting is told to stop";
}

TEST_F(UndoHistoryTest, AStepClosedByACommandStopsThePaintingThatOpenedIt) {
    ASSERT_EQ(undo.RecordRegionWithWarning(doc), 1);
    EXPECT_TRUE(undo.SaveRegion(doc, 0, 0, 5, 5));
    Do("select-all");
    EXPECT_FALSE(undo.SaveRegion(doc, 0, 0, 5, 5));
    ASSERT_EQ(undo.RecordRegionWithWarning(doc), 1);
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_FALSE(undo.SaveRegion(doc, 0, 0, 5, 5)) << "undone while painting";
}

TEST_F(UndoHistoryTest, TheModifiedFlagFollowsTheHistory) {
    doc.SetModifiedFlag(false); // as after opening
    Do("select-all");           // changes no pixel and leaves the document unmodified
    Do("pen=2,2;20,2");
    doc.SetModifiedFlag(); // as the tools do
    Do("pen=2,8;20,8");
    doc.SetModifiedFlag();
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_TRUE(doc.IsModified());
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_FALSE(doc.IsModified()) << "back where the file is";
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_FALSE(doc.IsModified()) << "a selection step changed nothing the file holds";
    ASSERT_TRUE(undo.Redo(doc));
    ASSERT_TRUE(undo.Redo(doc));
    EXPECT_TRUE(doc.IsModified());

    doc.SetModifiedFlag(false); // saved after the first stroke
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_TRUE(doc.IsModified());
    ASSERT_TRUE(undo.Redo(doc));
    EXPECT_FALSE(doc.IsModified());
    ASSERT_TRUE(undo.Redo(doc));
    EXPECT_TRUE(doc.IsModified());
}

TEST_F(UndoHistoryTest, StepsCarryTheNameOfTheirCommand) {
    Do("pen=2,2;20,2");
    Do("Rotate Right", [&] { return RunGeometryCommand(context, kRotateRight); });
    EXPECT_EQ(undo.UndoLabel(), "Rotate Right");
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_EQ(undo.RedoLabel(), "Rotate Right");
    EXPECT_EQ(undo.UndoLabel(), "pen");
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_EQ(undo.UndoLabel(), "");
}

// Steps keep what changed: a stroke at most its bounding rectangle twice, a
// whole copy only the tiles its command changed.
TEST(UndoMemory, StepsKeepOnlyWhatTheirCommandChanged) {
    CBriselDoc doc;
    doc.SetPicture(MakeGradientImage(600, 400));
    doc.SetMask(CreateMask(600, 400, true));
    CUndoHistory undo;
    CommandContext context{doc, undo, 0x0000FF, 0x00FF00};
    EngineOptions options;
    auto run = [&](const std::string& word) {
        EngineStep step;
        std::string error;
        ASSERT_TRUE(ParseEngineStep(word, step, error));
        ASSERT_EQ(RunEngineStep(context, options, step), 1);
    };
    run("pen=100,100;300,100");
    undo.BeginCommand(doc, "");
    const std::size_t strokeBox = (200 + 8) * 8 * 3;
    EXPECT_LE(undo.Bytes(), 2 * strokeBox);
    EXPECT_NE(dynamic_cast<const RegionPixels*>(undo.NewestStep()->SavedPixelStore()), nullptr);

    run("select-rect=500,300,560,350");
    run("fill-selection=white");
    run("select-none");
    undo.BeginCommand(doc, "");
    EXPECT_LE(undo.Bytes(), 600u * 400 * 3 / 4) << "no step keeps a whole copy of the picture";
    const auto* tiles = dynamic_cast<const TilePixels*>(undo.NewestStep()->SavedPixelStore());
    ASSERT_NE(tiles, nullptr);
    EXPECT_LE(tiles->TileCount(), 4) << "the stamped selection lies in at most four tiles";
}

} // namespace
