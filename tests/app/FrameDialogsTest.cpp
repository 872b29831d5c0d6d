#include "app/FrameDialogs.h"
#include "app/AppTestSupport.h"
#include "app/CBriselApp.h"
#include "app/CMainFrame.h"
#include "app/CommandIds.h"
#include "app/CommandRouter.h"
#include "app/HelpWindow.h"
#include "dialogs/ImageInfoDialog.h"
#include "dialogs/NumberTriple.h"
#include "dialogs/OptionsDialog.h"
#include "dialogs/SystemInfoDialog.h"
#include "platform/Settings.h"
#include "support/ScriptedPresenter.h"
#include "view/CDisplayRenderer.h"
#include "view/CViewWindow.h"
#include "view/FullScreenWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

// Counts the paint events a widget receives.
class PaintCounter : public QObject {
public:
    int paints = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            ++paints;
        }
        return false;
    }
};

class FrameDialogsTest : public ::testing::Test {
protected:
    void SetUp() override {
        frame = ShowMainFrame(app, 500, 400);
        ASSERT_NE(frame, nullptr);
        presenter = std::make_unique<ScriptedPresenter>();
    }

    CBriselApp app;
    CMainFrame* frame = nullptr;
    std::unique_ptr<ScriptedPresenter> presenter;
};

TEST_F(FrameDialogsTest, OptionsRepaintsOnlyWhenTheDisplayModeChanges) {
    PaintCounter counter;
    frame->ViewWindow()->viewport()->installEventFilter(&counter);
    QTest::qWait(50);
    counter.paints = 0;
    WithNextDialog([](QDialog* dialog) {
        auto* options = qobject_cast<OptionsDialog*>(dialog);
        ASSERT_NE(options, nullptr);
        options->Quality()->SetValue(35);
        options->accept();
    });
    frame->Router().Execute(cmd::kOptions);
    QTest::qWait(50);
    EXPECT_EQ(counter.paints, 0);
    EXPECT_EQ(frame->JpegQuality(), 35);

    WithNextDialog([](QDialog* dialog) {
        auto* options = qobject_cast<OptionsDialog*>(dialog);
        options->DisplayMode()->setCurrentIndex(CDisplayRenderer::k65536Colors);
        options->accept();
    });
    frame->Router().Execute(cmd::kOptions);
    QTest::qWait(50);
    EXPECT_GT(counter.paints, 0);
    EXPECT_EQ(frame->Renderer().DisplayMode(), CDisplayRenderer::k65536Colors);
    frame->Renderer().SetDisplayMode(CDisplayRenderer::kAutomatic);

    // Cancel changes nothing.
    WithNextDialog([](QDialog* dialog) {
        qobject_cast<OptionsDialog*>(dialog)->Quality()->SetValue(99);
        dialog->reject();
    });
    frame->Router().Execute(cmd::kOptions);
    EXPECT_EQ(frame->JpegQuality(), 35);
}

TEST_F(FrameDialogsTest, InformationDialogsOpenFromTheViewMenu) {
    QString fileName;
    WithNextDialog([&](QDialog* dialog) {
        auto* info = qobject_cast<ImageInfoDialog*>(dialog);
        ASSERT_NE(info, nullptr);
        fileName = info->FileNameText();
        dialog->accept();
    });
    EXPECT_TRUE(frame->Router().Execute(cmd::kImageInformation));
    EXPECT_EQ(fileName, ImageInfoDialog::UntitledName());

    bool opened = false;
    WithNextDialog([&](QDialog* dialog) {
        opened = qobject_cast<SystemInfoDialog*>(dialog) != nullptr;
        dialog->accept();
    });
    EXPECT_TRUE(frame->Router().Execute(cmd::kSystemInformation));
    EXPECT_TRUE(opened);
    const SystemFigures figures = FrameDialogs::ReadSystemFigures();
    EXPECT_GT(figures.totalMemory, 0u);
    EXPECT_LE(figures.freeMemory, figures.totalMemory);
    EXPECT_GT(figures.totalSpace, 0u);
    EXPECT_LE(figures.freeSpace, figures.totalSpace);
}

TEST_F(FrameDialogsTest, HelpOpensTheBundledGuide) {
    ASSERT_TRUE(frame->Router().Execute(cmd::kHelp));
    ASSERT_NE(app.Help(), nullptr);
    EXPECT_TRUE(app.Help()->isVisible());
    EXPECT_TRUE(app.Help()->Browser()->toPlainText().contains("Tamrick User Guide"));
    EXPECT_TRUE(presenter->Shown().empty());
    // Esc, Ctrl+W and the Close button each close it.
    const auto closesWith = [this](const std::function<void(HelpWindow*)>& act) {
        frame->Router().Execute(cmd::kHelp);
        HelpWindow* help = app.Help();
        QApplication::setActiveWindow(help);
        if (!QTest::qWaitForWindowActive(help)) {
            ADD_FAILURE() << "the help window did not become active";
            return false;
        }
        act(help);
        return !help->isVisible();
    };
    EXPECT_TRUE(closesWith([](HelpWindow* help) { QTest::keyClick(help, Qt::Key_Escape); }));
    EXPECT_TRUE(closesWith([](HelpWindow* help) { QTest::keyClick(help, Qt::Key_W, Qt::ControlModifier); }));
    EXPECT_TRUE(closesWith([](HelpWindow* help) {
        help->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Close)->click();
    }));
}

// Every field shows what the settings hold, and OK writes only what changed.
TEST_F(FrameDialogsTest, OptionsShowWhatTheSettingsHoldAndWriteOnlyChanges) {
    WithNextDialog([](QDialog* dialog) {
        auto* options = qobject_cast<OptionsDialog*>(dialog);
        options->MaxLoadWidth()->setValue(4500);
        options->MaxLoadHeight()->setValue(4400);
        options->UndoSteps()->setValue(42);
        options->FitLargePictures()->setChecked(false);
        options->Pressure()->setChecked(true);
        options->accept();
    });
    frame->Router().Execute(cmd::kOptions);
    OptionsValues shown;
    WithNextDialog([&shown](QDialog* dialog) {
        shown = qobject_cast<OptionsDialog*>(dialog)->Values();
        dialog->reject();
    });
    frame->Router().Execute(cmd::kOptions);
    EXPECT_EQ(shown.maxLoadWidth, 4500);
    EXPECT_EQ(shown.maxLoadHeight, 4400);
    EXPECT_EQ(shown.undoSteps, 42);
    EXPECT_FALSE(shown.fitLargePictures);
    EXPECT_TRUE(shown.pressureSimulation);

    // Changing only the quality leaves every other key as the file has it.
    platform::Settings::WriteInt("MainSection", "MaxLoadWidth", 77777);
    WithNextDialog([](QDialog* dialog) {
        qobject_cast<OptionsDialog*>(dialog)->Quality()->SetValue(55);
        dialog->accept();
    });
    frame->Router().Execute(cmd::kOptions);
    EXPECT_EQ(platform::Settings::ReadInt("MainSection", "MaxLoadWidth", 0), 77777);
    EXPECT_EQ(frame->JpegQuality(), 55);
    platform::Settings::Remove("MainSection", "MaxLoadWidth");
    platform::Settings::Remove("MainSection", "MaxLoadHeight");
    CMainFrame::SetFitsLargePictures(true);
}

TEST(FullScreenWindow, FitsLargePicturesAndEndsOnEscape) {
    EXPECT_EQ(FullScreenWindow::FitReduction(800, 600, 800, 600), 1);
    EXPECT_EQ(FullScreenWindow::FitReduction(2000, 1000, 800, 600), 3);
    EXPECT_EQ(FullScreenWindow::FitReduction(801, 100, 800, 600), 2);

    CDisplayRenderer renderer;
    CBriselDoc doc;
    FullScreenWindow screen(renderer, &doc);
    QTimer::singleShot(50, &screen, [&screen] { QTest::keyClick(&screen, Qt::Key_Escape); });
    screen.RunModal();
    EXPECT_TRUE(screen.IsClosed());
    EXPECT_FALSE(screen.isVisible());
}

} // namespace
