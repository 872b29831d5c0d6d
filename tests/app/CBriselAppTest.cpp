#include "app/CBriselApp.h"
#include "app/CMainFrame.h"
#include "platform/ScreenMetrics.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

namespace {

TEST(ApplicationStart, OpensAWindowOnAWhiteScreenSizedPicture) {
    CBriselApp app;
    ASSERT_TRUE(app.InitInstance());
    CMainFrame* frame = app.MainFrame();
    ASSERT_NE(frame, nullptr);
    frame->show();
    EXPECT_EQ(frame->windowTitle(), "Tamrick");
    const CDibImage* picture = app.Document().GetPicture();
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->Width(), platform::ScreenMetrics::Width());
    EXPECT_EQ(picture->Height(), platform::ScreenMetrics::Height());
    EXPECT_EQ(picture->BitsPerPixel(), 24);
    EXPECT_EQ(picture->DpiX(), 72);
    EXPECT_EQ(picture->GetPixel(0, 0), 0x00FFFFFFu);
    EXPECT_FALSE(app.Document().IsModified());
}

} // namespace
