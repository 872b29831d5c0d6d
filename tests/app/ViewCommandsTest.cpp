#include "app/AppTestSupport.h"
#include "app/CommandIds.h"
#include "app/CommandRouter.h"
#include "platform/Settings.h"
#include "support/ScriptedPresenter.h"
#include "view/CBriselView.h"
#include "view/CDisplayRenderer.h"
#include "view/CViewWindow.h"
#include "view/ZoomRules.h"

#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class ViewCommandsTest : public ::testing::Test {
protected:
    void SetUp() override {
        platform::Settings::WriteInt("MainSection", "FitLargePictures", 1);
        platform::Settings::WriteInt("MainSection", "PixelGrid", 0);
        frame = ShowMainFrame(app, 1280, 800);
        ASSERT_NE(frame, nullptr);
        presenter = std::make_unique<ScriptedPresenter>();
    }
    QString Picture(const QString& name, int width, int height) {
        QImage image(width, height, QImage::Format_RGB888);
        image.fill(QColor(40, 90, 160));
        const QString path = folder.filePath(name);
        image.save(path, "BMP");
        return path;
    }
    int Zoom() const { return frame->View()->Zoom(); }
    QSize Room() const { return frame->ViewWindow()->ClientSizeWithoutBars(); }

    QTemporaryDir folder;
    CBriselApp app;
    CMainFrame* frame = nullptr;
    std::unique_ptr<ScriptedPresenter> presenter;
};

TEST_F(ViewCommandsTest, ALargePictureOpensFittedAndASmallOneAtActualSize) {
    ASSERT_TRUE(app.OpenDocumentFile(Picture("large.bmp", 1900, 1400)));
    const int fitted = zoom::FitCode(1900, 1400, Room().width(), Room().height());
    EXPECT_LT(fitted, 1);
    EXPECT_EQ(Zoom(), fitted);
    EXPECT_TRUE(frame->windowTitle().startsWith(QStringLiteral("large.bmp[*] (1/%1)").arg(-fitted)))
        << frame->windowTitle().toStdString();
    const zoom::Size shown = zoom::ZoomedSize(1900, 1400, Zoom());
    EXPECT_LE(shown.width, Room().width());
    EXPECT_LE(shown.height, Room().height());

    ASSERT_TRUE(app.OpenDocumentFile(Picture("small.bmp", 300, 200)));
    EXPECT_EQ(Zoom(), 1);
    // Fit in Window magnifies a small picture as far as it fits.
    ASSERT_TRUE(frame->Router().Execute(cmd::kFitInWindow));
    EXPECT_EQ(Zoom(), zoom::FitCode(300, 200, Room().width(), Room().height()));
    EXPECT_GT(Zoom(), 1);

    platform::Settings::WriteInt("MainSection", "FitLargePictures", 0);
    ASSERT_TRUE(app.OpenDocumentFile(folder.filePath("large.bmp")));
    EXPECT_EQ(Zoom(), 1) << "with the option off pictures open at actual size";
}

// The grid is drawn on screen from x 4 on and never reaches the picture.
TEST_F(ViewCommandsTest, PixelGridShowsOnScreenOnlyFromFourOn) {
    ASSERT_TRUE(app.OpenDocumentFile(Picture("grid.bmp", 40, 30)));
    CBriselView& view = *frame->View();
    const auto shownAt = [&](QPoint image, QPoint offset) {
        const QImage shot = frame->ViewWindow()->viewport()->grab().toImage();
        return shot.pixelColor(view.ImageToScreen(image) + offset);
    };
    const QColor picture(40, 90, 160);
    frame->Router().Execute(cmd::kMagnifyIds[2]); // x 4
    ASSERT_EQ(Zoom(), 4);
    EXPECT_EQ(shownAt({5, 5}, {0, 0}), picture);
    ASSERT_TRUE(frame->Router().Execute(cmd::kPixelGrid));
    EXPECT_TRUE(frame->Router().IsChecked(cmd::kPixelGrid));
    EXPECT_EQ(platform::Settings::ReadInt("MainSection", "PixelGrid", 0), 1);
    const QColor line = shownAt({5, 5}, {0, 0});
    EXPECT_GT(std::abs(line.red() - picture.red()) + std::abs(line.blue() - picture.blue()), 200)
        << "the line stands out from the picture";
    EXPECT_EQ(shownAt({5, 5}, {0, 2}), line) << "the left edge of a pixel is a line";
    EXPECT_EQ(shownAt({5, 5}, {2, 2}), picture) << "inside the pixel the picture shows";
    frame->Router().Execute(cmd::kMagnifyIds[1]); // x 3
    EXPECT_EQ(shownAt({5, 5}, {0, 0}), picture);

    const CDibImage& stored = *app.Document().GetPicture();
    for (int y = 0; y < stored.Height(); ++y) {
        for (int x = 0; x < stored.Width(); ++x) {
            ASSERT_EQ(stored.GetPixel(x, y), MakeColorWord(40, 90, 160)) << x << "," << y;
        }
    }
}

} // namespace
