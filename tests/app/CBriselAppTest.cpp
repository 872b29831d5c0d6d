#include "app/CBriselApp.h"
#include "app/CMainFrame.h"
#include "platform/ScreenMetrics.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

namespace {

TEST(ApplicationStart, OpensAWindowOnTheWhitePictureNewOffers) {
    CBriselApp app;
    ASSERT_TRUE(app.InitInstance());
    CMainFrame* frame = app.MainFrame();
    ASSERT_NE(frame, nullptr);
    frame->show();
    EXPECT_EQ(frame->windowTitle(), QStringLiteral("Untitled[*] \u2014 Tamrick"));
    const CDibImage* picture = app.Document().GetPicture();
    ASSERT_NE(picture, nullptr);
    const NewImageValues offered = CBriselApp::StoredNewImageValues();
    EXPECT_EQ(picture->Width(), offered.width);
    EXPECT_EQ(picture->Height(), offered.height);
    EXPECT_EQ(picture->BitsPerPixel(), 24);
    EXPECT_EQ(picture->DpiX(), 72);
    EXPECT_EQ(picture->GetPixel(0, 0), 0x00FFFFFFu);
    EXPECT_FALSE(app.Document().IsModified());
}

} // namespace
