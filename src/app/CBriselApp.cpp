#include "app/CBriselApp.h"

#include "app/CMainFrame.h"
#include "app/CommandIds.h"
#include "app/CommandRouter.h"
#include "app/FileDialogs.h"
#include "app/HelpWindow.h"
#include "app/ToolIcons.h"
#include "dialogs/AboutDialog.h"
#include "dialogs/ImageInfoDialog.h"
#include "formats/CDocumentFiles.h"
#include "formats/LoadLimits.h"
#include "image/DibHelpers.h"
#include "platform/AppIdentity.h"
#include "platform/MessagePresenter.h"
#include "platform/ScreenMetrics.h"
#include "platform/Settings.h"
#include "platform/StringTable.h"
#include "platform/WaitCursor.h"
#include "view/CDisplayRenderer.h"
#include "tools/ToolTable.h"

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>

static void InitResources() {
    Q_INIT_RESOURCE(tamrick);
}

namespace {
constexpr ColorWord kWhite = 0x00FFFFFF;
const char* const kNewSection = "New";

void InstallScreenMetrics() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) {
        return;
    }
    platform::ScreenMetrics::SetLogicalDpi(qRound(screen->logicalDotsPerInchX()),
                                           qRound(screen->logicalDotsPerInchY()));
    platform::ScreenMetrics::SetSize(screen->size().width(), screen->size().height());
}

void InstallWaitCursor() {
    platform::WaitCursor::SetHandlers([] { QGuiApplication::setOverrideCursor(Qt::WaitCursor); },
                                      [] { QGuiApplication::restoreOverrideCursor(); });
}

ColorWord BackgroundSetting() {
    return MakeColorWord(platform::Settings::ReadInt("MainSection", "Background-R", 255),
                         platform::Settings::ReadInt("MainSection", "Background-G", 255),
                         platform::Settings::ReadInt("MainSection", "Background-B", 255));
}
} // namespace

CBriselApp::CBriselApp() {
    InitResources();
    QCoreApplication::setOrganizationName(QString::fromUtf8(identity::kCompany));
    QCoreApplication::setApplicationName(QString::fromUtf8(identity::kProgram));
    QCoreApplication::setApplicationVersion(QString::fromUtf8(identity::kVersion));
    QGuiApplication::setApplicationDisplayName(QString::fromUtf8(identity::kProgram));
    // Lets the desktop match the window to the installed launcher entry.
    QGuiApplication::setDesktopFileName(QString::fromUtf8(identity::kAppId));
    InstallScreenMetrics();
    InstallWaitCursor();
    m_renderer = std::make_unique<CDisplayRenderer>();
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        m_renderer->SetScreenDepth(screen->depth());
    }
}

CBriselApp::~CBriselApp() {
    delete m_help;
    m_files.reset();
    m_frame.reset();
    platform::SetMessagePresenter(nullptr);
    platform::WaitCursor::SetHandlers(nullptr, nullptr);
}

// The picture at start is the one New offers.
void CBriselApp::StartupPicture() {
    const NewImageValues values = StoredNewImageValues();
    BitmapInfoHeader header;
    InitDibHeader(header, values.width, values.height, 24, values.dpi, values.dpi);
    m_document.NewImage(header, kFillFormatTrueColor, values.contents != 0 ? BackgroundSetting() : kWhite);
}

bool CBriselApp::InitInstance(const QStringList& files) {
    StartupPicture();
    if (m_document.GetPicture() == nullptr) {
        return false;
    }
    m_frame = std::make_unique<CMainFrame>(this, m_document, *m_renderer);
    ConnectDocumentFiles();
    m_presenter = std::make_unique<QtMessagePresenter>(m_frame.get());
    platform::SetMessagePresenter(m_presenter.get());
    connect(m_frame.get(), &CMainFrame::FileDropped, this, [this](const QString& path) {
        if (CanCloseDocument()) {
            OpenDocumentFile(path);
        }
    });
    RefreshRecentMenu();
    m_frame->InitialUpdate();
    // The first view is replaced at once by the object of the current tool.
    m_frame->OnToolCommand(m_frame->ToolId());
    if (!files.isEmpty()) {
        OpenDocumentFile(files.first());
    }
    return true;
}

void CBriselApp::ConnectDocumentFiles() {
    m_files = std::make_unique<CDocumentFiles>(m_document, m_frame->UndoHistory(), LoadLimits::AtStartUp());
    m_files->SetSaveDialog([this](const std::string& initialPath, const char*) -> std::optional<std::string> {
        const QString path = FileDialogs::AskSavePath(m_frame.get(), QString::fromStdString(initialPath));
        if (path.isEmpty()) {
            return std::nullopt;
        }
        return path.toStdString();
    });
    m_files->SetViewReset([this] { m_frame->InitialUpdate(); });
    m_files->SetJpegQuality([this] { return m_frame->JpegQuality(); });
}

NewImageValues CBriselApp::StoredNewImageValues() {
    NewImageValues values;
    values.width = platform::Settings::ReadInt(kNewSection, "Width", 640);
    values.height = platform::Settings::ReadInt(kNewSection, "Height", 480);
    values.dpi = platform::Settings::ReadInt(kNewSection, "DPI", 72);
    values.contents = platform::Settings::ReadInt(kNewSection, "Contents", 0) != 0 ? 1 : 0;
    return values;
}

void CBriselApp::OnFileNew() {
    if (!CanCloseDocument()) {
        return;
    }
    NewImageDialog dialog(StoredNewImageValues(), m_frame.get());
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const NewImageValues values = dialog.Values();
    platform::Settings::WriteInt(kNewSection, "Width", values.width);
    platform::Settings::WriteInt(kNewSection, "Height", values.height);
    platform::Settings::WriteInt(kNewSection, "DPI", values.dpi);
    platform::Settings::WriteInt(kNewSection, "Contents", values.contents);
    CreateNewImage(values);
}

bool CBriselApp::CreateNewImage(const NewImageValues& values) {
    BitmapInfoHeader header;
    InitDibHeader(header, values.width, values.height, 24, values.dpi, values.dpi);
    const bool wasModified = m_document.IsModified();
    const bool wasReduced = m_document.IsReduced();
    const ColorWord contents = values.contents != 0 && m_frame ? m_frame->Background() : kWhite;
    platform::WaitCursor wait;
    if (!m_document.NewImage(header, kFillFormatTrueColor, contents)) {
        m_document.SetModifiedFlag(wasModified);
        m_document.SetReduced(wasReduced);
        return false;
    }
    m_document.SetPathName("");
    m_document.SetTitle("");
    AfterDocumentReplaced();
    return true;
}

void CBriselApp::AfterDocumentReplaced() {
    if (m_frame == nullptr) {
        return;
    }
    m_frame->UndoHistory().Empty();
    ShowDocumentCaption();
    m_frame->InitialUpdate();
}

void CBriselApp::RefreshRecentMenu() {
    for (int i = 0; i < RecentFiles::kCapacity; ++i) {
        QAction* entry = m_frame->Router().Action(cmd::kRecentFirst + i);
        const QString path = m_recent.At(i);
        entry->setVisible(!path.isEmpty());
        entry->setText(QStringLiteral("&%1 %2").arg(i + 1).arg(QFileInfo(path).fileName()));
        entry->setToolTip(path);
        entry->setStatusTip(path);
    }
}

void CBriselApp::ShowDocumentCaption() {
    const QString title = QString::fromStdString(m_document.Title());
    m_frame->SetDocumentName(title.isEmpty() ? ImageInfoDialog::UntitledName() : title);
}

void CBriselApp::OnFileOpen() {
    if (!CanCloseDocument()) {
        return;
    }
    const QString path = FileDialogs::AskOpenPath(m_frame.get());
    if (!path.isEmpty()) {
        OpenDocumentFile(path);
    }
}

bool CBriselApp::OpenDocumentFile(const QString& path) {
    if (m_files == nullptr) {
        return false;
    }
    // A file that cannot be opened changes nothing; an opened one replaces the
    // picture and says so with a size-change update.
    bool replaced = false;
    const int watch = m_document.AddViewObserver(
        [&replaced](int hint) { replaced = replaced || hint == CBriselDoc::kHintImageSize; });
    const bool opened = m_files->OnOpenDocument(path.toStdString()) == 1;
    m_document.RemoveViewObserver(watch);
    if (replaced) {
        AfterDocumentReplaced();
    }
    if (!opened) {
        m_recent.Remove(path);
        RefreshRecentMenu();
        return false;
    }
    m_recent.Add(path);
    RefreshRecentMenu();
    m_frame->FitLargePicture();
    m_files->ShowReducedNotice();
    return true;
}

void CBriselApp::AfterDocumentCommand(bool succeeded) {
    if (!succeeded || m_frame == nullptr) {
        return;
    }
    if (!m_document.PathName().empty()) {
        m_recent.Add(QString::fromStdString(m_document.PathName()));
        RefreshRecentMenu();
    }
    ShowDocumentCaption();
    m_frame->StateChanged();
}

void CBriselApp::OnSend(ExternalSender::Channel channel) {
    if (m_files == nullptr) {
        return;
    }
    const bool noFile = m_document.PathName().empty() || m_document.IsReduced();
    if (m_document.IsModified() || noFile) {
        switch (platform::ShowMessage(platform::IDS_SAVE_BEFORE_SENDING,
                                      platform::MB_YESNOCANCEL | platform::MB_ICONQUESTION)) {
        case platform::MessageAnswer::Yes:
            if (!m_files->Save()) {
                return;
            }
            m_document.SetModifiedFlag(false);
            AfterDocumentCommand(true);
            break;
        case platform::MessageAnswer::No:
            if (noFile) {
                return;
            }
            break;
        default:
            return;
        }
    }
    ExternalSender::Send(channel, QString::fromStdString(m_document.PathName()));
}

void CBriselApp::OnOpenRecent(int index) {
    const QString path = m_recent.At(index);
    if (!path.isEmpty() && CanCloseDocument()) {
        OpenDocumentFile(path);
    }
}

bool CBriselApp::CanCloseDocument() {
    if (m_files == nullptr) {
        return true;
    }
    const bool wasModified = m_document.IsModified();
    if (!m_files->SaveModified()) {
        return false;
    }
    // Saved on the way: the caption and the recent files name the file.
    AfterDocumentCommand(wasModified && !m_document.IsModified());
    return true;
}

void CBriselApp::OnExit() {
    if (m_frame != nullptr) {
        m_frame->Exit();
    }
}

void CBriselApp::OnHelp() {
    if (m_help == nullptr) {
        m_help = new HelpWindow;
    }
    if (!m_help->HasPage()) {
        platform::ShowMessage(platform::IDS_HELP_MISSING, platform::MB_ICONEXCLAMATION);
        return;
    }
    m_help->show();
    m_help->raise();
    m_help->activateWindow();
}

void CBriselApp::OnAbout() {
    AboutDialog dialog(icons::Application(), m_frame.get());
    dialog.exec();
}
