#include "CommandDialogFixture.h"

#include "dialogs/CEdgeDlg.h"
#include "dialogs/CEmbossDlg.h"
#include "dialogs/CMosaicDlg.h"
#include "dialogs/CRescaleDlg.h"
#include "dialogs/CRotateDlg.h"
#include "dialogs/NumberTriple.h"
#include "ops/ImageCommands.h"
#include "platform/Settings.h"
#include "platform/StringTable.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>

namespace {

using FilterDialogTest = CommandDialogTest;

TEST_F(FilterDialogTest, OkRunsTheFilterWithTheChosenValuesAsOneUndoStep) {
    struct Case {
        int commandId;
        int code;
        std::function<void(CommandDialog&)> choose;
        FilterOptions options;
    };
    FilterOptions emboss = DefaultFilterOptions(kEmboss);
    emboss.direction = 5;
    emboss.depth = 7;
    FilterOptions mosaic = DefaultFilterOptions(kMosaic);
    mosaic.cellSize = 6;
    FilterOptions edge = DefaultFilterOptions(kFindEdge);
    edge.colorMode = 0;
    edge.transparency = 30;
    FilterOptions contour = DefaultFilterOptions(kTraceContour);
    contour.darkestEdge = 1;
    contour.keepOriginal = 1;
    const Case cases[] = {
        {32778, kEmboss,
         [](CommandDialog& d) {
             auto& dialog = static_cast<CEmbossDlg&>(d);
             ClickButton(dialog.DirectionButton(5));
             Retype(dialog.Depth()->Edit(), "7");
         },
         emboss},
        {32779, kMosaic,
         [](CommandDialog& d) { static_cast<CMosaicDlg&>(d).CellSize()->TrackBar()->setValue(6); }, mosaic},
        {32795, kAverage, [](CommandDialog&) {}, DefaultFilterOptions(kAverage)},
        {32781, kFindEdge,
         [](CommandDialog& d) {
             auto& dialog = static_cast<CEdgeDlg&>(d);
             ClickButton(dialog.ColorMode()->button(0));
             Retype(dialog.Transparency()->Edit(), "30");
         },
         edge},
        {32782, kTraceContour,
         [](CommandDialog& d) {
             auto& dialog = static_cast<CEdgeDlg&>(d);
             ClickButton(dialog.EdgeMethod()->button(1));
             ClickButton(dialog.Background()->button(1));
         },
         contour},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.commandId);
        UsePicture(MakeGradientImage(40, 30));
        ASSERT_EQ(RunMenuCommand(c.commandId,
                                 [&c](CommandDialog& dialog) {
                                     c.choose(dialog);
                                     ClickOk(dialog);
                                 }),
                  1);
        ASSERT_EQ(RunImageCommand(twinCtx, c.code, c.options), 1);
        EXPECT_TRUE(MatchesTwin());
        EXPECT_EQ(undo.Kind(), 1);
        undo.Undo(doc);
        EXPECT_TRUE(PictureUntouched());
    }
}

TEST_F(FilterDialogTest, CancelChangesNothingAndRecordsNothing) {
    for (int commandId : {32778, 32779, 32795, 32781, 32782, 32829, 32797}) {
        SCOPED_TRACE(commandId);
        EXPECT_EQ(RunMenuCommand(commandId, [](CommandDialog& dialog) { dialog.reject(); }), 0);
        EXPECT_TRUE(PictureUntouched());
        EXPECT_EQ(undo.Kind(), 0);
        EXPECT_FALSE(doc.IsModified());
    }
}

TEST_F(FilterDialogTest, TypingClampsToTheRangeAndMovesTheOtherControls) {
    CEmbossDlg emboss;
    emboss.show();
    Retype(emboss.Depth()->Edit(), "15");
    EXPECT_EQ(emboss.Depth()->Edit()->text(), "10");
    EXPECT_EQ(emboss.Depth()->TrackBar()->value(), 10);
    EXPECT_EQ(emboss.Depth()->UpDown()->value(), 10);

    // Below the range the number may still grow into it, so it is clamped
    // only when editing ends: "12" can be typed into 2..16.
    CMosaicDlg mosaic;
    Retype(mosaic.CellSize()->Edit(), "1");
    EXPECT_EQ(mosaic.CellSize()->Edit()->text(), "1");
    QTest::keyClicks(mosaic.CellSize()->Edit(), "2");
    EXPECT_EQ(mosaic.CellSize()->TrackBar()->value(), 12);
    Retype(mosaic.CellSize()->Edit(), "1");
    mosaic.accept();
    EXPECT_EQ(mosaic.CellSize()->Edit()->text(), "2");
    EXPECT_EQ(mosaic.CommandValues(), std::vector<int>{2});

    CEdgeDlg edge(false);
    Retype(edge.Transparency()->Edit(), "250");
    EXPECT_EQ(edge.Transparency()->Value(), 100);
    edge.Transparency()->UpDown()->stepBy(-3);
    EXPECT_EQ(edge.Transparency()->Edit()->text(), "97");
    EXPECT_EQ(edge.Transparency()->TrackBar()->value(), 97);
}

TEST_F(FilterDialogTest, RotateRefusesAnOutOfRangeDegreeAndTurnsCounterClockwise) {
    ASSERT_EQ(RunMenuCommand(32829,
                             [this](CommandDialog& d) {
                                 auto& dialog = static_cast<CRotateDlg&>(d);
                                 Retype(dialog.Degree()->Edit(), "400");
                                 ClickOk(dialog);
                                 EXPECT_TRUE(dialog.isVisible());
                                 EXPECT_EQ(presenter.ShownIds(),
                                           std::vector<int>{platform::IDS_DEGREE_OUT_OF_RANGE});
                                 Retype(dialog.Degree()->Edit(), "30");
                                 ClickButton(dialog.CounterClockwise());
                                 ClickOk(dialog);
                             }),
              1);
    ASSERT_EQ(RunRotate(twinCtx, 30, false), 1);
    EXPECT_TRUE(MatchesTwin());
    EXPECT_EQ(undo.Kind(), 10);
}

TEST_F(FilterDialogTest, RescaleKeepsTheAspectAndRefusesBadSizes) {
    platform::Settings::WriteInt("DocumentInfo", "Unit", CRescaleDlg::kPixel);
    ASSERT_EQ(RunMenuCommand(32797,
                             [this](CommandDialog& d) {
                                 auto& dialog = static_cast<CRescaleDlg&>(d);
                                 Retype(dialog.WidthEdit(), "20");
                                 EXPECT_EQ(dialog.HeightEdit()->text(), "15");
                                 dialog.KeepAspect()->setChecked(false);
                                 Retype(dialog.HeightEdit(), "30001"); // beyond the largest picture side
                                 ClickOk(dialog);
                                 Retype(dialog.HeightEdit(), "x");
                                 ClickOk(dialog);
                                 Retype(dialog.HeightEdit(), "16");
                                 Retype(dialog.WidthEdit(), "0");
                                 ClickOk(dialog);
                                 Retype(dialog.WidthEdit(), "20");
                                 Retype(dialog.ResolutionEdit(), "0");
                                 ClickOk(dialog);
                                 EXPECT_TRUE(dialog.isVisible());
                                 Retype(dialog.ResolutionEdit(), "150");
                                 ClickOk(dialog);
                             }),
              1);
    EXPECT_EQ(presenter.ShownIds(),
              (std::vector<int>{platform::IDS_HEIGHT_OUT_OF_RANGE, platform::IDS_NOT_A_NUMBER,
                                platform::IDS_WIDTH_OUT_OF_RANGE, platform::IDS_RESOLUTION_OUT_OF_RANGE}));
    ASSERT_EQ(RunRescale(twinCtx, 20, 16, 150), 1);
    EXPECT_TRUE(MatchesTwin());
    EXPECT_EQ(doc.GetPicture()->DpiX(), 150);
}

TEST_F(FilterDialogTest, RescaleInCentimetresKeepsLengthsAndRemembersTheUnit) {
    platform::Settings::WriteInt("DocumentInfo", "Unit", CRescaleDlg::kPixel);
    CRescaleDlg dialog(doc); // 40 x 30 pixels at 72 dpi
    dialog.show();
    ClickButton(dialog.Units()->button(CRescaleDlg::kCm));
    EXPECT_EQ(platform::Settings::ReadInt("DocumentInfo", "Unit", -1), CRescaleDlg::kCm);
    EXPECT_EQ(dialog.WidthEdit()->text(), "1.41");
    dialog.accept(); // shown rounded, but the size itself is untouched
    EXPECT_EQ(dialog.CommandValues(), (std::vector<int>{40, 30, 72}));
    // The same length at twice the resolution takes twice the pixels.
    Retype(dialog.ResolutionEdit(), "144");
    EXPECT_EQ(dialog.PixelWidth(), 80);
    EXPECT_EQ(dialog.PixelHeight(), 60);
    Retype(dialog.WidthEdit(), "2.54");
    EXPECT_EQ(dialog.PixelWidth(), 144);
    EXPECT_EQ(dialog.PixelHeight(), 108);
}

// Dialogs that ask for numbers open with the focus in their first field, its
// text selected, so what the user types replaces it.
TEST_F(FilterDialogTest, NumberDialogsOpenWithTheFocusInTheirFirstField) {
    for (const int id : {32829, 32779, 32818, 32797}) { // Rotate, Mosaic, Brightness/Contrast, Rescale
        SCOPED_TRACE(id);
        RunMenuCommand(id, [](CommandDialog& dialog) {
            QWidget* first = dialog.FirstField();
            ASSERT_NE(first, nullptr);
            EXPECT_EQ(dialog.focusWidget(), first);
            auto* edit = qobject_cast<QLineEdit*>(first);
            ASSERT_NE(edit, nullptr);
            EXPECT_EQ(edit->selectedText(), edit->text());
        });
    }
}

} // namespace
