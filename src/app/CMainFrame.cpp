#include "app/CMainFrame.h"

#include "platform/StringTable.h"

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QMenuBar>
#include <QPixmap>
#include <QScrollArea>

CMainFrame::CMainFrame(CBriselDoc& document, QWidget* parent) : QMainWindow(parent), m_document(document) {
    setWindowTitle(QString::fromUtf8(platform::LoadString(platform::IDS_PRODUCT_NAME).data()));
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("Exit"), QKeySequence::Quit, qApp, &QApplication::closeAllWindows);

    auto* scroller = new QScrollArea(this);
    m_canvas = new QLabel(scroller);
    scroller->setWidget(m_canvas);
    scroller->setAlignment(Qt::AlignCenter);
    setCentralWidget(scroller);

    m_observerId = m_document.AddViewObserver([this](int) { ShowPicture(); });
    ShowPicture();
}

CMainFrame::~CMainFrame() {
    m_document.RemoveViewObserver(m_observerId);
}

void CMainFrame::ShowPicture() {
    const CDibImage* picture = m_document.GetPicture();
    if (picture == nullptr || picture->BitsPerPixel() != 24) {
        m_canvas->clear();
        return;
    }
    // The pixel rows are stored bottom-up in blue, green, red order.
    const QImage rows(picture->Bits(), picture->Width(), picture->Height(),
                      static_cast<qsizetype>(picture->RowBytes()), QImage::Format_BGR888);
    m_canvas->setPixmap(QPixmap::fromImage(rows.mirrored()));
    m_canvas->adjustSize();
}
