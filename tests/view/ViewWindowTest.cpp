#include "support/ImageFixtures.h"
#include "support/TestViewHost.h"
#include "view/CBriselView.h"
#include "view/CViewWindow.h"
#include "tools/ToolSwitch.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

// A tool that writes down what happens to it.
class RecordingTool : public CBriselView {
public:
    explicit RecordingTool(std::vector<std::string>* log) : m_log(log) {}
    void ToolActivate() override { m_log->push_back("activate"); }
    void ToolDeactivate() override { m_log->push_back("deactivate"); }
    void ToolResume() override {
        CBriselView::ToolResume();
        m_log->push_back("resume");
    }
    void OnOutlineTick() override { m_log->push_back("tick"); }
    void OnPenDown(const PenEvent& pen) override {
        const QPoint image = ScreenToImage(pen.point);
        m_log->push_back("down " + std::to_string(image.x()) + "," + std::to_string(image.y()));
    }

private:
    std::vector<std::string>* m_log;
};

class ViewWindowTest : public ::testing::Test {
protected:
    void Open(int width, int height, QSize window = QSize(200, 150)) {
        host.doc.SetPicture(MakeGradientImage(width, height));
        host.doc.SetMask(CreateMask(width, height, true));
        view.resize(window);
        view.View()->Attach(&view, &host.doc, &host);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
        View().OnInitialUpdate();
    }
    CBriselView& View() { return *view.View(); }

    TestViewHost host;
    CViewWindow view;
};

TEST_F(ViewWindowTest, MapsScreenToImageAtZoomThreeAndScrolled) {
    Open(400, 300);
    View().ZoomMagnify(3);
    ASSERT_EQ(View().Zoom(), 3);
    EXPECT_EQ(host.suffix, "(x3)");
    EXPECT_EQ(View().ScreenToImage({2, 2}), QPoint(0, 0));
    EXPECT_EQ(View().ScreenToImage({3, 5}), QPoint(1, 1));
    // Scroll positions stay on the zoom grid.
    view.horizontalScrollBar()->setValue(31);
    EXPECT_EQ(view.ScrollX(), 30);
    EXPECT_EQ(View().State().firstVisibleX, 10);
    EXPECT_EQ(View().ScreenToImage({0, 0}), QPoint(10, 0));
    EXPECT_EQ(View().ImageToScreen({11, 0}, CBriselView::kEdgeX | CBriselView::kEdgeY), QPoint(5, 2));
}

TEST_F(ViewWindowTest, MapsScreenToImageAtHalfSizeAndCentresSmallPictures) {
    Open(400, 300);
    View().ZoomReduce(2);
    ASSERT_EQ(View().Zoom(), -2);
    EXPECT_EQ(host.suffix, "(1/2)");
    EXPECT_EQ(View().ScreenToImage({5, 0}).x(), 10);

    View().ZoomReduce(8);
    // 50 x 37 in a larger client: centred, and the gap maps outside the picture.
    const ViewState& s = View().State();
    EXPECT_EQ(s.originX, (view.ClientSize().width() - 50) / 2);
    EXPECT_EQ(s.originY, (view.ClientSize().height() - 37) / 2);
    EXPECT_LT(View().ScreenToImage({0, 0}).x(), 0);
    EXPECT_EQ(s.visibleImageWidth, 400);
}

TEST_F(ViewWindowTest, PaintsThePictureThroughTheRenderer) {
    Open(40, 30, QSize(300, 200));
    View().ZoomMagnify(2);
    const QImage shot = view.viewport()->grab().toImage();
    const ViewState& s = View().State();
    for (const QPoint image : {QPoint(0, 0), QPoint(7, 3), QPoint(39, 29)}) {
        const QPoint screen = View().ImageToScreen(image);
        const QRgb rgb = shot.pixel(screen + QPoint(1, 1));
        EXPECT_EQ(MakeColorWord(qRed(rgb), qGreen(rgb), qBlue(rgb)),
                  host.doc.GetPicture()->GetPixel(image.x(), image.y()));
    }
    // The gap around the centred picture shows the background pattern, not the picture.
    EXPECT_GT(s.originX, 0);
    const QRgb gap = shot.pixel(1, 1);
    EXPECT_NE(MakeColorWord(qRed(gap), qGreen(gap), qBlue(gap)), host.doc.GetPicture()->GetPixel(0, 0));
}

TEST_F(ViewWindowTest, ToolSwitchKeepsZoomScrollAndOutlineTimer) {
    Open(2000, 1600);
    View().ZoomReduce(4);
    view.horizontalScrollBar()->setValue(43);
    view.verticalScrollBar()->setValue(21);
    View().StartOutlineTimer();
    const ViewState before = View().State();
    const int scrollX = view.ScrollX();
    const int scrollY = view.ScrollY();
    EXPECT_EQ(scrollX, 40);
    EXPECT_EQ(scrollY, 20);

    std::vector<std::string> log;
    ASSERT_TRUE(SwitchToolView(view, &host.doc, &host, std::make_unique<RecordingTool>(&log)));
    EXPECT_EQ(View().Zoom(), -4);
    EXPECT_EQ(view.ScrollX(), scrollX);
    EXPECT_EQ(view.ScrollY(), scrollY);
    EXPECT_EQ(View().State().firstVisibleX, before.firstVisibleX);
    EXPECT_TRUE(View().State().outlineTimerOn);
    EXPECT_TRUE(view.OutlineTimerActive());
    EXPECT_EQ(log, (std::vector<std::string>{"activate", "resume"}));

    std::vector<std::string> second;
    SwitchToolView(view, &host.doc, &host, std::make_unique<RecordingTool>(&second));
    EXPECT_EQ(log.back(), "deactivate");
    // The new tool receives the timer's ticks and the pen.
    QTest::qWait(450);
    EXPECT_NE(std::count(second.begin(), second.end(), "tick"), 0);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(3, 2));
    const std::string expected = "down " + std::to_string((40 + 3) * 4) + "," + std::to_string((20 + 2) * 4);
    EXPECT_NE(std::find(second.begin(), second.end(), expected), second.end());
}

TEST_F(ViewWindowTest, SwitchWithoutDocumentChangesNothing) {
    Open(100, 100);
    CBriselView* before = view.View();
    std::vector<std::string> log;
    EXPECT_FALSE(SwitchToolView(view, nullptr, &host, std::make_unique<RecordingTool>(&log)));
    EXPECT_EQ(view.View(), before);
    EXPECT_TRUE(log.empty());
}

TEST_F(ViewWindowTest, ArrowKeysScrollByOneLine) {
    Open(2000, 100, QSize(300, 400)); // only a horizontal bar
    ASSERT_TRUE(view.HasHorizontalBar());
    ASSERT_FALSE(view.HasVerticalBar());
    QTest::keyClick(&view, Qt::Key_Down);
    EXPECT_EQ(view.ScrollX(), 100); // line = 2000 / 20, sideways without a vertical bar
    QTest::keyClick(&view, Qt::Key_Up);
    EXPECT_EQ(view.ScrollX(), 0);
    QTest::keyClick(&view, Qt::Key_Right);
    EXPECT_EQ(view.ScrollX(), 100);
    EXPECT_EQ(View().State().lastPointX, -1);
}

TEST_F(ViewWindowTest, ZoomRefusedBeyondTheLimitLeavesEverythingAsItWas) {
    Open(5000, 10);
    View().ZoomMagnify(6);
    ASSERT_EQ(View().Zoom(), 6);
    host.suffix.clear();
    View().ZoomInStep(true);
    EXPECT_EQ(View().Zoom(), 6);
    EXPECT_TRUE(host.suffix.empty());
}

} // namespace

namespace {

TEST_F(ViewWindowTest, WheelScrollsAndCtrlWheelZoomsAroundThePointer) {
    Open(1000, 800);
    const QPointF at(60, 40);
    QWheelEvent down(at, view.viewport()->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.viewport(), &down);
    EXPECT_EQ(view.ScrollY(), 40); // one line: 800 / 20

    const QPoint before = View().ScreenToImage(at.toPoint());
    QWheelEvent zoomIn(at, view.viewport()->mapToGlobal(at), QPoint(), QPoint(0, 120), Qt::NoButton,
                       Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.viewport(), &zoomIn);
    EXPECT_EQ(View().Zoom(), 2);
    const QPoint after = View().ScreenToImage(at.toPoint());
    EXPECT_LE(std::abs(after.x() - before.x()), 1);
    EXPECT_LE(std::abs(after.y() - before.y()), 1);
}

TEST_F(ViewWindowTest, DroppedFilesAreReported) {
    Open(100, 100);
    QSignalSpy dropped(&view, &CViewWindow::FileDropped);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/photo.png"))});
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &drop);
    ASSERT_EQ(dropped.count(), 1);
    EXPECT_EQ(dropped.at(0).at(0).toString(), QStringLiteral("/tmp/photo.png"));
}

} // namespace
