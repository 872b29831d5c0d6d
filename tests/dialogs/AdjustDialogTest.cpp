#include "CommandDialogFixture.h"

#include "dialogs/CAdjustDlg.h"
#include "dialogs/LivePreview.h"
#include "dialogs/NumberTriple.h"
#include "ops/AdjustPreview.h"
#include "platform/HeapBlock.h"
#include "platform/StringTable.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QSlider>

namespace {

using AdjustDialogTest = CommandDialogTest;

// Pixels of every hue and brightness, so that each adjustment changes them.
std::unique_ptr<CDibImage> MakeColourfulImage(int width, int height) {
    auto image = MakeImage(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image->SetPixel(x, y,
                            MakeColorWord((x * 37 + y * 11) & 255, (x * 5 + y * 53) & 255, (x * y) & 255));
        }
    }
    return image;
}

TEST_F(AdjustDialogTest, OkKeepsThePreviewedSlotValuesAsOneUndoStep) {
    // Brightness/contrast on the red slot alone: the all-channels values stay
    // in their own slot and are not applied.
    ASSERT_EQ(RunMenuCommand(32818,
                             [](CommandDialog& d) {
                                 auto& dialog = static_cast<CAdjustDlg&>(d);
                                 dialog.First()->TrackBar()->setValue(40);
                                 dialog.Channels()->setCurrentIndex(1);
                                 EXPECT_EQ(dialog.First()->Value(), 0);
                                 Retype(dialog.Second()->Edit(), "-150");
                                 EXPECT_EQ(dialog.Second()->Edit()->text(), "-100");
                                 dialog.First()->TrackBar()->setValue(-20);
                                 ClickOk(dialog);
                             }),
              1);
    AdjustSettings expected = AdjustSettings::Defaults(kAdjustBrightnessContrast);
    expected.channel = 1;
    expected.first[1] = -20;
    expected.second[1] = -100;
    ASSERT_EQ(RunAdjustCommand(twinCtx, expected), 1);
    EXPECT_TRUE(MatchesTwin());
    EXPECT_EQ(undo.Kind(), 1);
    EXPECT_TRUE(doc.IsModified());
    undo.Undo(doc);
    EXPECT_TRUE(PictureUntouched());
}

TEST_F(AdjustDialogTest, GammaClampsTypingAndAppliesTheAllChannelsValue) {
    ASSERT_EQ(RunMenuCommand(32820,
                             [](CommandDialog& d) {
                                 auto& dialog = static_cast<CAdjustDlg&>(d);
                                 dialog.Channels()->setCurrentIndex(2);
                                 dialog.First()->TrackBar()->setValue(30);
                                 dialog.Channels()->setCurrentIndex(0);
                                 EXPECT_EQ(dialog.First()->Value(), 10);
                                 Retype(dialog.First()->Edit(), "80");
                                 EXPECT_EQ(dialog.First()->TrackBar()->value(), 79);
                                 ClickOk(dialog);
                             }),
              1);
    AdjustSettings expected = AdjustSettings::Defaults(kAdjustGamma);
    expected.first[0] = 79;
    ASSERT_EQ(RunAdjustCommand(twinCtx, expected), 1);
    EXPECT_TRUE(MatchesTwin());
}

TEST_F(AdjustDialogTest, HueSaturationPreviewsLiveAndOkAppliesTheLastValues) {
    UsePicture(MakeColourfulImage(40, 30));
    ASSERT_EQ(RunMenuCommand(32819,
                             [](CommandDialog& d) {
                                 auto& dialog = static_cast<CAdjustDlg&>(d);
                                 QTRY_COMPARE(dialog.Preview()->ShownCount(), 1); // computed on opening
                                 EXPECT_EQ(dialog.focusWidget(), dialog.First()->Edit()) << "typing goes to Hue";
                                 Retype(dialog.First()->Edit(), "90");
                                 QTRY_VERIFY(dialog.Preview()->ShownCount() >= 2); // no button needed
                                 Retype(dialog.Second()->Edit(), "-40");
                                 ClickOk(dialog); // keeps the newest values
                             }),
              1);
    AdjustSettings expected = AdjustSettings::Defaults(kAdjustHueSaturation);
    expected.first[0] = 90;
    expected.second[0] = -40;
    ASSERT_EQ(RunAdjustCommand(twinCtx, expected), 1);
    EXPECT_TRUE(MatchesTwin());
}

TEST_F(AdjustDialogTest, CancelAfterPreviewsRestoresThePictureExactly) {
    UsePicture(MakeColourfulImage(40, 30));
    for (int commandId : {32818, 32819, 32820}) {
        SCOPED_TRACE(commandId);
        EXPECT_EQ(RunMenuCommand(commandId,
                                 [](CommandDialog& d) {
                                     auto& dialog = static_cast<CAdjustDlg&>(d);
                                     for (int value : {5, 30, 60}) {
                                         dialog.First()->TrackBar()->setValue(value);
                                     }
                                     if (dialog.PreviewButton() != nullptr) {
                                         QTest::mouseClick(dialog.PreviewButton(), Qt::LeftButton);
                                     }
                                     QTRY_VERIFY(!dialog.Preview()->Busy());
                                     dialog.reject();
                                 }),
                  0);
        EXPECT_TRUE(PictureUntouched());
        EXPECT_EQ(undo.Kind(), 0);
        EXPECT_FALSE(doc.IsModified());
    }
}

TEST_F(AdjustDialogTest, WithAFloatingSelectionOnlyItsPixelsAreAdjusted) {
    ASSERT_EQ(doc.CreateFloating(5, 4, 24, 19, false), 1);
    ASSERT_EQ(twin.CreateFloating(5, 4, 24, 19, false), 1);
    const auto floating = DuplicateImage(doc.GetFloatImage());
    CAdjustDlg dialog(kAdjustGamma, ctx);
    ASSERT_EQ(dialog.Open(), 1);
    dialog.First()->TrackBar()->setValue(22);
    QTRY_VERIFY(!dialog.Preview()->Busy());
    EXPECT_TRUE(PictureUntouched());
    EXPECT_FALSE(SamePixels(*doc.GetFloatImage(), *floating));
    dialog.accept();
    AdjustSettings expected = AdjustSettings::Defaults(kAdjustGamma);
    expected.first[0] = 22;
    ASSERT_EQ(RunAdjustCommand(twinCtx, expected), 1);
    EXPECT_TRUE(SamePixels(*doc.GetFloatImage(), *twin.GetFloatImage()));
    EXPECT_TRUE(PictureUntouched());
    undo.Undo(doc);
    EXPECT_TRUE(SamePixels(*doc.GetFloatImage(), *floating));
}

TEST_F(AdjustDialogTest, PreviewOfALargePictureLeavesTheEventLoopRunning) {
    UsePicture(MakeColourfulImage(3000, 2000));
    CAdjustDlg dialog(kAdjustBrightnessContrast, ctx);
    ASSERT_EQ(dialog.Open(), 1);
    dialog.show();
    int ticks = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&ticks] { ++ticks; });
    ticker.start(1);
    // A drag over the track bar: each step asks for a preview and returns at
    // once; values asked for while one is computed replace one another.
    QElapsedTimer drag;
    drag.start();
    for (int value = 1; value <= 40; ++value) {
        dialog.First()->TrackBar()->setValue(value);
        EXPECT_TRUE(dialog.Preview()->Busy());
    }
    EXPECT_LT(drag.elapsed(), 1000);
    QTRY_VERIFY_WITH_TIMEOUT(!dialog.Preview()->Busy(), 20000);
    EXPECT_GT(ticks, 0);
    EXPECT_LT(dialog.Preview()->ShownCount(), 41);
    ClickOk(dialog);

    AdjustSettings expected = AdjustSettings::Defaults(kAdjustBrightnessContrast);
    expected.first[0] = 40;
    ASSERT_EQ(RunAdjustCommand(twinCtx, expected), 1);
    EXPECT_TRUE(MatchesTwin());
    EXPECT_EQ(undo.Kind(), 1);
}

TEST_F(AdjustDialogTest, OkWhileAPreviewIsComputingKeepsTheNewestValues) {
    UsePicture(MakeColourfulImage(1500, 1000));
    CAdjustDlg dialog(kAdjustGamma, ctx);
    ASSERT_EQ(dialog.Open(), 1);
    dialog.First()->TrackBar()->setValue(25);
    dialog.First()->TrackBar()->setValue(3);
    dialog.accept();
    AdjustSettings expected = AdjustSettings::Defaults(kAdjustGamma);
    expected.first[0] = 3;
    ASSERT_EQ(RunAdjustCommand(twinCtx, expected), 1);
    EXPECT_TRUE(MatchesTwin());
}

TEST_F(AdjustDialogTest, WithoutMemoryTheDialogStaysShutOrPreviewsInPlace) {
    const auto run = commanddialogs::Find(6008);
    const OpsCommand& command = *FindOpsCommand(32818);
    // No room for the result: the message, no dialog, nothing changed.
    platform::HeapBlock::FailNextAllocations(1);
    EXPECT_EQ(run(nullptr, ctx, command), 0);
    platform::HeapBlock::FailNextAllocations(0);
    EXPECT_EQ(presenter.ShownIds(), std::vector<int>{platform::IDS_DISK_SPACE_NOT_ENOUGH});
    EXPECT_TRUE(PictureUntouched());
    EXPECT_EQ(undo.Kind(), 0);

    // No room for the second buffer: the preview is computed in place.
    platform::HeapBlock::FailNextAllocations(1, 2);
    CAdjustDlg dialog(kAdjustBrightnessContrast, ctx);
    ASSERT_EQ(dialog.Open(), 1);
    platform::HeapBlock::FailNextAllocations(0);
    dialog.First()->TrackBar()->setValue(-35);
    EXPECT_FALSE(dialog.Preview()->Busy());
    dialog.accept();
    AdjustSettings expected = AdjustSettings::Defaults(kAdjustBrightnessContrast);
    expected.first[0] = -35;
    ASSERT_EQ(RunAdjustCommand(twinCtx, expected), 1);
    EXPECT_TRUE(MatchesTwin());
}

} // namespace
