#include "app/CBriselApp.h"

#include "app/CMainFrame.h"
#include "image/DibHelpers.h"
#include "platform/MessagePresenter.h"
#include "platform/ScreenMetrics.h"
#include "platform/Settings.h"
#include "platform/WaitCursor.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>

namespace {
constexpr ColorWord kWhite = 0x00FFFFFF;

void InstallScreenMetrics() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) {
        return;
    }
    platform::ScreenMetrics::SetLogicalDpi(qRound(screen->logicalDotsPerInchX()),
                                           qRound(screen->logicalDotsPerInchY()));
    const QSize size = screen->availableGeometry().size();
    platform::ScreenMetrics::SetSize(size.width(), size.height());
}

void InstallWaitCursor() {
    platform::WaitCursor::SetHandlers([] { QGuiApplication::setOverrideCursor(Qt::WaitCursor); },
                                      [] { QGuiApplication::restoreOverrideCursor(); });
}

ColorWord StartupContents() {
    if (platform::Settings::ReadInt("New", "Contents", 0) == 0) {
        return kWhite;
    }
    return MakeColorWord(platform::Settings::ReadInt("MainSection", "Background-R", 255),
                         platform::Settings::ReadInt("MainSection", "Background-G", 255),
                         platform::Settings::ReadInt("MainSection", "Background-B", 255));
}
} // namespace

CBriselApp::CBriselApp() {
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvane Systems Inc."));
    QCoreApplication::setApplicationName(QStringLiteral("Tamrick"));
    InstallScreenMetrics();
    InstallWaitCursor();
}

CBriselApp::~CBriselApp() {
    m_frame.reset();
    platform::SetMessagePresenter(nullptr);
    platform::WaitCursor::SetHandlers(nullptr, nullptr);
}

bool CBriselApp::InitInstance() {
    BitmapInfoHeader header;
    InitDibHeader(header, platform::ScreenMetrics::Width(), platform::ScreenMetrics::Height(), 24, 72, 72);
    if (!m_document.NewImage(header, kFillFormatTrueColor, StartupContents())) {
        return false;
    }
    m_frame = std::make_unique<CMainFrame>(m_document);
    m_presenter = std::make_unique<QtMessagePresenter>(m_frame.get());
    platform::SetMessagePresenter(m_presenter.get());
    return true;
}
