#pragma once

#include "image/CBriselDoc.h"
#include "image/CUndoRecord.h"

#include <QMainWindow>

class QLabel;

// The main window. For now it shows the document's picture at actual size in
// a scrolling area; menus, tool palette and the zooming view come later.
class CMainFrame : public QMainWindow {
    Q_OBJECT
public:
    explicit CMainFrame(CBriselDoc& document, QWidget* parent = nullptr);
    ~CMainFrame() override;

    CUndoRecord& UndoRecord() { return m_undo; }

private:
    void ShowPicture();

    CBriselDoc& m_document;
    CUndoRecord m_undo;
    QLabel* m_canvas = nullptr;
    int m_observerId = 0;
};
