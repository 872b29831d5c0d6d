#include "platform/HeapBlock.h"
#include "platform/MessagePresenter.h"
#include "platform/Settings.h"
#include "platform/StringTable.h"
#include "platform/WaitCursor.h"
#include "support/ScriptedPresenter.h"

#include <QSettings>
#include <gtest/gtest.h>

namespace {

TEST(PlatformServices, MessagesCarryTheTableTextCaptionAndStyle) {
    ScriptedPresenter presenter;
    presenter.Answer(platform::MessageAnswer::No);
    const auto answer = platform::ShowMessage(platform::IDS_PUT_FLOATING_BEFORE_SAVE,
                                              platform::MB_YESNOCANCEL | platform::MB_ICONQUESTION);
    EXPECT_EQ(answer, platform::MessageAnswer::No);
    platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
    platform::ShowMessage(platform::IDS_UNDO_OUT_OF_MEMORY, platform::MB_ICONSTOP);
    ASSERT_EQ(presenter.Shown().size(), 3u);
    const auto& question = presenter.Shown()[0];
    EXPECT_EQ(question.caption, "Tamrick");
    EXPECT_EQ(question.icon, platform::MessageIcon::Question);
    EXPECT_EQ(question.buttons, platform::MessageButtons::YesNoCancel);
    EXPECT_EQ(
        presenter.Shown()[1].text,
        "Memory is not enough !\nPlease close some pictures or applications to get  more memory space.");
    EXPECT_EQ(presenter.Shown()[2].icon, platform::MessageIcon::Stop);
}

TEST(PlatformServices, SettingsLiveInTheCompanyIniFile) {
    EXPECT_EQ(platform::Settings::ReadInt("MainSection", "JPGQuality", 80), 80);
    platform::Settings::WriteInt("MainSection", "JPGQuality", 55);
    platform::Settings::WriteString("Text", "lfFaceName", "Courier New");
    EXPECT_EQ(platform::Settings::ReadInt("MainSection", "JPGQuality", 80), 55);
    EXPECT_EQ(platform::Settings::ReadString("Text", "lfFaceName", ""), "Courier New");
    const QSettings store(QSettings::NativeFormat, QSettings::UserScope, "Quorvane Systems Inc.", "Tamrick");
    EXPECT_TRUE(store.fileName().endsWith("Quorvane Systems Inc./Tamrick.conf"))
        << store.fileName().toStdString();
    EXPECT_EQ(store.value("MainSection/JPGQuality").toInt(), 55);
}

TEST(PlatformServices, AllocationHookFailsExactlyTheAskedAllocations) {
    platform::HeapBlock::FailNextAllocations(2, 1);
    EXPECT_TRUE(platform::HeapBlock::Allocate(16));
    EXPECT_FALSE(platform::HeapBlock::Allocate(16));
    EXPECT_FALSE(platform::HeapBlock::Allocate(16));
    const auto block = platform::HeapBlock::Allocate(16);
    ASSERT_TRUE(block);
    EXPECT_EQ(block.data()[15], 0);
}

TEST(PlatformServices, NestedWaitCursorsShowOnce) {
    int shows = 0;
    int hides = 0;
    platform::WaitCursor::SetHandlers([&] { ++shows; }, [&] { ++hides; });
    {
        platform::WaitCursor outer;
        platform::WaitCursor inner;
        EXPECT_TRUE(platform::WaitCursor::IsShown());
    }
    platform::WaitCursor::SetHandlers(nullptr, nullptr);
    EXPECT_EQ(shows, 1);
    EXPECT_EQ(hides, 1);
}

} // namespace
