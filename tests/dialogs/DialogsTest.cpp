#include "dialogs/AboutDialog.h"
#include "dialogs/ImageInfoDialog.h"
#include "dialogs/NumberFormat.h"
#include "dialogs/NumberTriple.h"
#include "dialogs/OptionsDialog.h"
#include "dialogs/SystemInfoDialog.h"
#include "image/CBriselDoc.h"
#include "platform/Settings.h"
#include "platform/StringTable.h"
#include "support/ImageFixtures.h"
#include "support/ScriptedPresenter.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <gtest/gtest.h>

namespace {

TEST(NumberFormat, GroupsThousandsAndKeepsTwoDecimals) {
    EXPECT_EQ(numfmt::Grouped(0), "0");
    EXPECT_EQ(numfmt::Grouped(999), "999");
    EXPECT_EQ(numfmt::Grouped(1000), "1,000");
    EXPECT_EQ(numfmt::Grouped(1234567), "1,234,567");
    EXPECT_EQ(numfmt::Grouped(-45001), "-45,001");
    EXPECT_EQ(numfmt::GroupedDecimal2(1234.5), "1,234.50");
    EXPECT_EQ(numfmt::GroupedDecimal2(0.004), "0.00");
    EXPECT_EQ(numfmt::Kilobytes(2048), "2.00");
    EXPECT_EQ(numfmt::Kilobytes(1536), "1.50");
    EXPECT_EQ(numfmt::Kilobytes(1024 * 1234), "1,234.00");
    EXPECT_EQ(SystemInfoDialog::KBytes(1024ull * 1024 * 1024), "1,048,576");
    EXPECT_EQ(SystemInfoDialog::KBytes(2047), "1");
}

TEST(NumberTriple, TheThreeControlsStayInStep) {
    NumberTriple triple(1, 100, 80);
    EXPECT_EQ(triple.UpDown()->value(), 80);
    EXPECT_EQ(triple.TrackBar()->value(), 80);
    triple.TrackBar()->setValue(42);
    EXPECT_EQ(triple.Edit()->text(), "42");
    EXPECT_EQ(triple.UpDown()->value(), 42);
    triple.Edit()->clear();
    QTest::keyClicks(triple.Edit(), "7");
    EXPECT_EQ(triple.TrackBar()->value(), 7);
    EXPECT_EQ(triple.UpDown()->value(), 7);
    // An out-of-range number stays in the edit box for the dialog to refuse;
    // the other two keep the last valid value (70, typed on the way).
    QTest::keyClicks(triple.Edit(), "00");
    EXPECT_EQ(triple.Value(), 700);
    EXPECT_FALSE(triple.InRange());
    EXPECT_EQ(triple.TrackBar()->value(), 70);
}

TEST(OptionsDialog, RefusesAnOutOfRangeQualityAndReportsTheChoices) {
    ScriptedPresenter presenter;
    OptionsDialog dialog({80, 0, false});
    dialog.show();
    dialog.Quality()->SetValue(0);
    dialog.Quality()->Edit()->setText("101");
    dialog.accept();
    EXPECT_EQ(presenter.ShownIds(), std::vector<int>{platform::IDS_QUALITY_OUT_OF_RANGE});
    EXPECT_TRUE(dialog.isVisible());
    dialog.Quality()->SetValue(55);
    dialog.DisplayMode()->setCurrentIndex(3);
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    const OptionsValues values = dialog.Values();
    EXPECT_EQ(values.jpegQuality, 55);
    EXPECT_EQ(values.displayMode, 3);
    EXPECT_FALSE(values.pressureSimulation);
}

TEST(ImageInfoDialog, ShowsTheUntitledNameSizesAndUnits) {
    CBriselDoc doc;
    doc.SetPicture(MakeImage(16, 32, 24, 100)); // 48 bytes a row x 32 rows = 1536 bytes
    platform::Settings::WriteInt("DocumentInfo", "Unit", 2);
    ImageInfoDialog dialog(doc, false);
    EXPECT_EQ(dialog.FileNameText(), ImageInfoDialog::UntitledName());
    EXPECT_EQ(dialog.ImageSizeText(), "1.50");
    EXPECT_EQ(dialog.WidthText(), "16");
    dialog.UnitList()->setCurrentIndex(ImageInfoDialog::kCm);
    EXPECT_EQ(dialog.WidthText(), "0.41"); // 16 x 2.54 / 100
    EXPECT_EQ(dialog.HeightText(), "0.81");
    EXPECT_EQ(platform::Settings::ReadInt("DocumentInfo", "Unit", 2), ImageInfoDialog::kCm);
    dialog.UnitList()->setCurrentIndex(ImageInfoDialog::kInch);
    EXPECT_EQ(dialog.WidthText(), "0.16");
    EXPECT_EQ(ImageInfoDialog::Length(1234, 0, ImageInfoDialog::kInch), "0.00");
    EXPECT_EQ(ImageInfoDialog::Length(30000, 72, ImageInfoDialog::kPixel), "30,000");
    EXPECT_EQ(ImageInfoDialog::Length(300000, 100, ImageInfoDialog::kCm), "7,620.00");

    doc.SetPathName("/tmp/photo.jpg");
    doc.SetTitle("photo.jpg");
    EXPECT_EQ(ImageInfoDialog(doc, true).FileNameText(), "photo.jpg");
    doc.SetReduced(true);
    EXPECT_EQ(ImageInfoDialog(doc, true).FileNameText(), ImageInfoDialog::UntitledName());
}

TEST(AboutDialog, NamesTheProductAndVersion) {
    EXPECT_EQ(AboutDialog::VersionText(), "Tamrick Version 2.11");
}

} // namespace
