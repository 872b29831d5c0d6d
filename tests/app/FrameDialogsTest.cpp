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
#include "support/ScriptedPresenter.h"
#include "view/CDisplayRenderer.h"
#include "view/CViewWindow.h"
#include "view/FullScreenWindow.h"

#include <QComboBox>
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
    app.Help()->close();
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
