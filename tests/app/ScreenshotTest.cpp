// Starts the real program on a virtual X display with a picture, lets it save
// a screenshot and checks that the window actually drew something.
#include <QDir>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <set>

namespace {

TEST(Screenshot, TheProgramStartsWithAPictureAndDrawsItsWindow) {
    if (QStandardPaths::findExecutable(QStringLiteral("xvfb-run")).isEmpty()) {
        GTEST_SKIP() << "xvfb-run is not installed";
    }
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    QImage picture(320, 200, QImage::Format_RGB888);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            picture.setPixelColor(x, y, QColor(x * 255 / 320, y * 255 / 200, 128));
        }
    }
    const QString picturePath = folder.filePath(QStringLiteral("sample.bmp"));
    ASSERT_TRUE(picture.save(picturePath, "BMP"));
    const QString shot = folder.filePath(QStringLiteral("shot.png"));

    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.insert(QStringLiteral("SCREENSHOT_SIZE"), QStringLiteral("800x600x24"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(TAMRICK_SOURCE_DIR "/scripts/screenshot.sh"),
                  {QStringLiteral(TAMRICK_EXECUTABLE), picturePath, shot});
    ASSERT_TRUE(process.waitForFinished(90000));
    ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();

    const QImage image(shot);
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.size(), QSize(800, 600));
    std::set<QRgb> colours;
    for (int y = 0; y < image.height(); y += 7) {
        for (int x = 0; x < image.width(); x += 7) {
            colours.insert(image.pixel(x, y));
        }
    }
    // Menus, palette icons, scroll bars and the picture: far more than a blank screen.
    EXPECT_GT(colours.size(), 20u);
}

} // namespace
