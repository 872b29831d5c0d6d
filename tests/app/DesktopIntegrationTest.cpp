// What the desktop sees of Tamrick: the application id shared by the window
// and the installed files, the window icon, menus reachable with Alt and
// their letters, and a tool palette a keyboard and a screen reader can use.
#include "app/AppTestSupport.h"
#include "app/CBriselApp.h"
#include "app/CMainFrame.h"
#include "app/Mnemonics.h"
#include "app/ToolPalette.h"
#include "platform/AppIdentity.h"

#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QMap>
#include <QMenu>
#include <QMenuBar>
#include <QMimeDatabase>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

namespace {

class DesktopIntegrationTest : public ::testing::Test {
protected:
    void SetUp() override {
        frame = ShowMainFrame(app, 640, 480);
        ASSERT_NE(frame, nullptr);
        QApplication::setActiveWindow(frame);
    }

    CBriselApp app;
    CMainFrame* frame = nullptr;
};

// Every entry of `menu` and of the menus below it has a mnemonic, and no two
// entries of one menu share one.
void ExpectMnemonics(const QList<QAction*>& actions, const QString& where) {
    QString used;
    for (QAction* action : actions) {
        if (action->isSeparator()) {
            continue;
        }
        const QChar mark = mnemonics::Of(action->text());
        EXPECT_FALSE(mark.isNull()) << qPrintable(where + " > " + action->text());
        EXPECT_FALSE(used.contains(mark)) << qPrintable(where + " > " + action->text() + " repeats " + mark);
        used += mark;
        if (QMenu* submenu = action->menu()) {
            ExpectMnemonics(submenu->actions(), where + " > " + action->text());
        }
    }
}

TEST(Mnemonics, KeepGivenOnesAndPreferWordStarts) {
    EXPECT_EQ(mnemonics::Assign({"Save", "Save As...", "&Fill...", "Send via E-mail..."}),
              (QStringList{"&Save", "Save &As...", "&Fill...", "Send &via E-mail..."}));
    // With every word start taken, a later letter of the label serves.
    EXPECT_EQ(mnemonics::Assign({"Filter", "File"}), (QStringList{"&Filter", "F&ile"}));
    // An earlier label gives up its first choice when a later one has no
    // other letter left.
    EXPECT_EQ(mnemonics::Assign({"Copy", "Cut", "Redo", "Crop", "Paste"}),
              (QStringList{"&Copy", "C&ut", "&Redo", "Cr&op", "&Paste"}));
    // "&&" is a literal ampersand, not a mnemonic; digits count too.
    EXPECT_EQ(mnemonics::Of("Fish && Chips"), QChar());
    EXPECT_EQ(mnemonics::Assign({"x 2", "/ 2"}), (QStringList{"&x 2", "/ &2"}));
    // A label with nothing left to give stays as it is.
    EXPECT_EQ(mnemonics::Assign({"&A", "A"}), (QStringList{"&A", "A"}));
}

TEST_F(DesktopIntegrationTest, EveryMenuEntryHasItsOwnMnemonic) {
    ExpectMnemonics(frame->menuBar()->actions(), "menu bar");
    // Alt and a menu's letter open that menu.
    QTest::keyClick(frame, Qt::Key_F, Qt::AltModifier);
    QMenu* file = frame->menuBar()->actions().front()->menu();
    EXPECT_TRUE(QTest::qWaitFor([file] { return file->isVisible(); }, 2000));
    file->close();
}

TEST_F(DesktopIntegrationTest, PaletteControlsHaveNamesTipsAndKeys) {
    ToolPalette* palette = frame->Palette();
    for (int button = 0; button < tools::kPaletteButtons; ++button) {
        QToolButton* tool = palette->ToolButton(button);
        EXPECT_FALSE(tool->accessibleName().isEmpty()) << button;
        EXPECT_TRUE(tool->toolTip().contains(QString::fromStdString(ToolPalette::ButtonShortcut(button))));
    }
    QTest::keyClick(frame, Qt::Key_3, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([palette] { return palette->HighlightedButton() == 2; }, 2000));

    const QStringList names{"Foreground color", "Background color"};
    for (int slot = 0; slot < 2; ++slot) {
        QToolButton* well = palette->ColorButton(slot);
        EXPECT_EQ(well->accessibleName(), names[slot]);
        EXPECT_TRUE(well->toolTip().contains(QString::fromStdString(ToolPalette::ColorShortcut(slot))));
    }
    EXPECT_EQ(palette->ColorButton(0)->accessibleDescription(), "#0000ff"); // the first start's blue
    EXPECT_FALSE(palette->PenButton()->accessibleName().isEmpty());
    EXPECT_FALSE(palette->OptionsButton()->accessibleName().isEmpty());

    // The background colour's key makes it current and asks to change it.
    QSignalSpy asked(palette, &ToolPalette::ColorChangeRequested);
    WithNextDialog([](QDialog* dialog) {
        if (dialog != nullptr) {
            dialog->reject();
        }
    });
    QTest::keyClick(frame, Qt::Key_B, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(asked.front().front().toInt(), 1);
    EXPECT_EQ(palette->CurrentColorSlot(), 1);
}

TEST_F(DesktopIntegrationTest, WindowAndInstalledFilesShareTheIdAndIcon) {
    EXPECT_EQ(QGuiApplication::desktopFileName(), QString::fromUtf8(identity::kAppId));
    EXPECT_EQ(QString::fromUtf8(identity::kAppId), "com.quorvane.Tamrick");

    // The window icon is the rendered icon the install puts in hicolor.
    const QIcon icon = frame->windowIcon();
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString installed = QStringLiteral(TAMRICK_BINARY_DIR "/icons/hicolor/%1x%1/apps/%2.png")
                                      .arg(size)
                                      .arg(QString::fromUtf8(identity::kAppId));
        const QImage expected(installed);
        ASSERT_FALSE(expected.isNull()) << qPrintable(installed);
        const auto premultiplied = QImage::Format_ARGB32_Premultiplied;
        EXPECT_EQ(icon.pixmap(QSize(size, size)).toImage().convertToFormat(premultiplied),
                  expected.convertToFormat(premultiplied))
            << size;
    }

    // The launcher entry names the same id and only types Tamrick can open.
    QFile desktop(QStringLiteral(TAMRICK_BINARY_DIR "/desktop/%1.desktop").arg(identity::kAppId));
    ASSERT_TRUE(desktop.open(QIODevice::ReadOnly | QIODevice::Text));
    QMap<QString, QString> keys;
    for (const QString& line : QString::fromUtf8(desktop.readAll()).split('\n')) {
        keys.insert(line.section('=', 0, 0), line.section('=', 1));
    }
    EXPECT_EQ(keys.value("Icon"), QString::fromUtf8(identity::kAppId));
    EXPECT_EQ(keys.value("Exec"), "tamrick %f");
    const QStringList types = keys.value("MimeType").split(';', Qt::SkipEmptyParts);
    ASSERT_GE(types.size(), 4);
    const QList<QByteArray> readable = QImageReader::supportedMimeTypes();
    const QMimeDatabase mimes;
    for (const QString& type : types) {
        const QMimeType known = mimes.mimeTypeForName(type);
        QStringList names = known.aliases();
        names << known.name() << type;
        const bool opens = std::any_of(names.begin(), names.end(), [&](const QString& name) {
            return readable.contains(name.toLatin1()) || name == "image/bmp" || name == "image/jpeg";
        });
        EXPECT_TRUE(opens) << qPrintable(type);
    }
}

} // namespace
