#include "tools/paint/AToolPaintText.h"
#include "app/AppTestSupport.h"
#include "dialogs/InputTextDialog.h"
#include "image/CommandContext.h"
#include "image/DocumentFixture.h"
#include "ops/EditCommands.h"
#include "paint/TextGlyphs.h"
#include "paint/TextPlacement.h"
#include "platform/StringTable.h"
#include "tools/select/SelectToolFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontComboBox>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLineEdit>
#include <gtest/gtest.h>

namespace {

class TextPlacementTest : public DocumentTest {
protected:
    int Place(const TextFont& font, const std::string& text, int x, int y) {
        result = EditResult{};
        return PlaceText(context, font, text, x, y, result);
    }
    int SelectedPixels() const {
        int count = 0;
        const CDibImage& mask = *doc.GetFloatMask();
        for (int y = 0; y < mask.Height(); ++y) {
            for (int x = 0; x < mask.Width(); ++x) {
                count += mask.GetBit(x, y);
            }
        }
        return count;
    }

    CommandContext context{doc, undo, 0x00123456, 0x00FFFFFF};
    EditResult result;
};

TEST_F(TextPlacementTest, ItalicTextIsOneAverageCharacterWiderAndStyledTextDiffers) {
    TextFont upright;
    upright.height = -20;
    TextFont italic = upright;
    italic.italic = 1;
    TextGlyphs glyphs;
    ASSERT_TRUE(glyphs.SetFont(italic));
    const int advance = QFontMetrics(glyphs.Font()).horizontalAdvance(QStringLiteral("Tamrick"));

    ASSERT_EQ(Place(upright, "Tamrick", 0, 0), 1);
    const int uprightWidth = doc.GetFloatMask()->Width();
    const int uprightPixels = SelectedPixels();
    ASSERT_EQ(Place(italic, "Tamrick", 0, 0), 1);
    EXPECT_EQ(doc.GetFloatMask()->Width(), advance + glyphs.AverageCharWidth());
    EXPECT_GT(doc.GetFloatMask()->Width(), uprightWidth);

    TextFont bold = upright;
    bold.weight = 700;
    ASSERT_EQ(Place(bold, "Tamrick", 0, 0), 1);
    EXPECT_GT(SelectedPixels(), uprightPixels) << "bold strokes are thicker";
}

TEST_F(TextPlacementTest, ShortMemoryChangesNothingAndEmptyTextOnlyPutsTheSelectionDown) {
    ASSERT_TRUE(doc.CreateFloating(1, 1, 4, 4, false));
    Paint(*doc.GetFloatImage(), 0x00ABCDEF);
    doc.SetFloatPosition(6, 2);
    const ImageRect floating{6, 2, 10, 6};

    platform::HeapBlock::FailNextAllocations(1);
    EXPECT_EQ(Place(TextFont{}, "text", 2, 2), 0);
    EXPECT_EQ(presenter.ShownIds().back(), platform::IDS_DISK_SPACE_NOT_ENOUGH);
    EXPECT_EQ(doc.GetFloatRect(), floating);
    EXPECT_EQ(undo.Kind(), 0);

    // Empty text: the old selection is stamped where it floats, as one undo
    // step, and nothing new floats.
    EXPECT_EQ(Place(TextFont{}, "", 2, 2), 1);
    EXPECT_EQ(doc.GetFloatMask(), nullptr);
    EXPECT_EQ(doc.GetPicture()->GetPixel(9, 5), 0x00ABCDEFu);
    EXPECT_EQ(doc.GetPicture()->GetPixel(2, 2), original->GetPixel(2, 2));
    EXPECT_FALSE(result.outline);
    EXPECT_EQ(undo.Kind(), 5);
    ASSERT_TRUE(undo.Undo(doc));
    EXPECT_EQ(doc.GetFloatRect(), floating);
    EXPECT_EQ(doc.GetPicture()->GetPixel(9, 5), original->GetPixel(9, 5));

    // Without a selection there is nothing to put down: the undo record keeps its step.
    doc.DiscardFloating();
    EXPECT_EQ(Place(TextFont{}, "", 2, 2), 0);
    EXPECT_EQ(doc.GetFloatMask(), nullptr);
    EXPECT_TRUE(undo.CanRedo(&doc));
}

TEST(TextGlyphsTest, CourierNewFallsBackToTheSystemMonospaceFaceWhenAbsent) {
    if (QFontDatabase::hasFamily(QStringLiteral("Courier New"))) {
        GTEST_SKIP() << "Courier New is installed here";
    }
    // What the tool asks for, not what the machine's fonts make of it: the
    // system's fixed face, without antialiasing.
    TextGlyphs glyphs;
    ASSERT_TRUE(glyphs.SetFont(TextFont{}));
    EXPECT_EQ(glyphs.Font().family(), QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    EXPECT_EQ(glyphs.Font().styleStrategy() & QFont::NoAntialias, QFont::NoAntialias);
}

TEST(InputTextDialogTest, EditsTheShownFieldsAndKeepsTheOthers) {
    TextFont font;
    font.escapement = 900;
    font.weight = 800;
    InputTextDialog dialog(font, "old");
    EXPECT_EQ(dialog.FaceBox()->currentText(), QStringLiteral("Courier New"));
    EXPECT_EQ(dialog.SizeBox()->currentText(), QStringLiteral("12"));
    EXPECT_TRUE(dialog.BoldBox()->isChecked());
    EXPECT_EQ(dialog.Font(), font) << "nothing touched, nothing changed";

    dialog.TextEdit()->setText(QStringLiteral("new text"));
    dialog.SizeBox()->setEditText(QStringLiteral("30"));
    dialog.BoldBox()->setChecked(false);
    dialog.ItalicBox()->setChecked(true);
    dialog.StrikeOutBox()->setChecked(true);
    const TextFont edited = dialog.Font();
    EXPECT_EQ(dialog.Text(), "new text");
    EXPECT_EQ(edited.height, -30);
    EXPECT_EQ(edited.weight, 400);
    EXPECT_EQ(edited.italic, 1);
    EXPECT_EQ(edited.strikeOut, 1);
    EXPECT_EQ(edited.underline, 0);
    EXPECT_EQ(edited.escapement, 900);
}

class AToolPaintTextTest : public SelectToolTest {
protected:
    // Answers the next "Input Text" dialog with `text`, or cancels it.
    void Answer(const QString& text, bool ok = true) {
        WithNextDialog([text, ok](QDialog* dialog) {
            auto* input = qobject_cast<InputTextDialog*>(dialog);
            ASSERT_NE(input, nullptr);
            input->TextEdit()->setText(text);
            input->ItalicBox()->setChecked(true);
            ok ? input->accept() : input->reject();
        });
    }
};

TEST_F(AToolPaintTextTest, ATapAsksForTextAndFloatsItThereInTheForegroundColour) {
    auto& tool = Open<AToolPaintText>(60, 40);
    Answer(QStringLiteral("Hi"), false);
    Tap(QPoint(10, 5));
    EXPECT_EQ(Selection(), ImageRect{});
    EXPECT_EQ(host.undo.Kind(), 0) << "cancelled: nothing changes";

    Answer(QStringLiteral("Hi"));
    Tap(QPoint(10, 5));
    TextGlyphs glyphs;
    ASSERT_TRUE(glyphs.SetFont(tool.Font()));
    EXPECT_TRUE(tool.Font().italic) << "the dialog's choice";
    EXPECT_EQ(Selection(), (ImageRect{10, 5, 10 + glyphs.Width("Hi"), 5 + glyphs.Height()}));
    EXPECT_EQ(host.doc.GetFloatImage()->GetPixel(0, 0), 0x00FF0000u) << "the host's pure blue";
    EXPECT_FALSE(Selected(10, 5)) << "only the glyphs are selected, not their cell";
    EXPECT_EQ(host.undo.Kind(), 5);
    EXPECT_EQ(TextFont::Read(), tool.Font()) << "the font is saved for the next time";
    EXPECT_EQ(TextFont::ReadInput(), "Hi");
    TextFont{}.Write();

    // A press on the floating text drags it; no new text is asked for.
    QPoint glyph;
    for (int x = 0; x < Selection().right - 10 && glyph.isNull(); ++x) {
        for (int y = 0; y < Selection().bottom - 5; ++y) {
            if (Selected(10 + x, 5 + y)) {
                glyph = QPoint(10 + x, 5 + y);
                break;
            }
        }
    }
    ASSERT_FALSE(glyph.isNull());
    auto asked = std::make_shared<bool>(false);
    WithNextDialog([asked](QDialog* dialog) {
        *asked = dialog != nullptr;
        if (dialog != nullptr) {
            dialog->reject();
        }
    });
    Drag(glyph, glyph + QPoint(7, 3));
    QApplication::processEvents();
    EXPECT_FALSE(*asked);
    EXPECT_EQ(host.doc.FloatX(), 17);
    EXPECT_EQ(host.undo.Kind(), 3);

    // Confirming empty text elsewhere puts the text down and floats nothing.
    Answer(QString());
    Tap(QPoint(55, 35));
    EXPECT_EQ(host.doc.GetFloatMask(), nullptr);
    EXPECT_EQ(host.doc.GetPicture()->GetPixel(glyph.x() + 7, glyph.y() + 3), 0x00FF0000u);
    EXPECT_EQ(host.undo.Kind(), 5);
    EXPECT_FALSE(view.OutlineTimerActive());
    TextFont{}.Write();
    TextFont::WriteInput("");
}

} // namespace
