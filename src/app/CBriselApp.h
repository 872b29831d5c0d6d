#pragma once

#include "app/ExternalSender.h"
#include "app/HelpWindow.h"
#include "app/QtMessagePresenter.h"
#include "app/RecentFiles.h"
#include "dialogs/NewImageDialog.h"
#include "image/CBriselDoc.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <memory>

class CDisplayRenderer;
class CDocumentFiles;
class CMainFrame;

// The application object: it starts the program (settings, the start-up
// picture, the main window, the first tool, a file named on the command line)
// and handles the File commands that are not the document's: New, Open,
// Open Recent, sending, Exit, Help and About.
class CBriselApp : public QObject {
    Q_OBJECT
public:
    CBriselApp();
    ~CBriselApp() override;

    // Creates the start-up picture and the main window and opens the first
    // file of `files`; false when the window cannot be made.
    bool InitInstance(const QStringList& files = {});
    CMainFrame* MainFrame() const { return m_frame.get(); }
    CBriselDoc& Document() { return m_document; }
    CDisplayRenderer& Renderer() { return *m_renderer; }
    RecentFiles& Recent() { return m_recent; }
    // The document's file commands (open, save, revert and their questions).
    CDocumentFiles* Files() const { return m_files.get(); }

    // File commands.
    void OnFileNew();
    // Makes the document a new picture; false (and the document unchanged)
    // when it cannot be made.
    bool CreateNewImage(const NewImageValues& values);
    void OnFileOpen();
    bool OpenDocumentFile(const QString& path);
    // After Save, Save As or Revert: the caption and the recent files follow.
    void AfterDocumentCommand(bool succeeded);
    void OnSend(ExternalSender::Channel channel);
    void OnOpenRecent(int index);
    bool HasRecentFile(int index) const { return index < m_recent.Count(); }
    void OnExit();
    // Asks about unsaved changes; false when the user cancels or the save
    // fails. After a save (through the Save As dialog too) the caller goes on.
    bool CanCloseDocument();
    void OnHelp();
    void OnAbout();
    HelpWindow* Help() const { return m_help; }

    // The values the "Create New Image" dialog starts with.
    static NewImageValues StoredNewImageValues();

private:
    void StartupPicture();
    void AfterDocumentReplaced();
    void ShowDocumentCaption();
    // Names the "Open Recent" entries after the files and hides unused ones.
    void RefreshRecentMenu();
    void ConnectDocumentFiles();

    CBriselDoc m_document;
    std::unique_ptr<CDisplayRenderer> m_renderer;
    std::unique_ptr<CMainFrame> m_frame;
    std::unique_ptr<CDocumentFiles> m_files;
    std::unique_ptr<QtMessagePresenter> m_presenter;
    RecentFiles m_recent;
    QPointer<HelpWindow> m_help;
};
