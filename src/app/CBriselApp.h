#pragma once

#include "app/QtMessagePresenter.h"
#include "image/CBriselDoc.h"

#include <memory>

class CMainFrame;

// The application object: installs the desktop side of the platform services,
// creates the first document and the main window.
class CBriselApp {
public:
    CBriselApp();
    ~CBriselApp();

    // Creates the start-up picture and the main window; false when either fails.
    bool InitInstance();
    CMainFrame* MainFrame() const { return m_frame.get(); }
    CBriselDoc& Document() { return m_document; }

private:
    CBriselDoc m_document;
    std::unique_ptr<CMainFrame> m_frame;
    std::unique_ptr<QtMessagePresenter> m_presenter;
};
