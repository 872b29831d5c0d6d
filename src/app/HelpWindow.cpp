#include "app/HelpWindow.h"

#include <QFile>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window), m_browser(new QTextBrowser(this)) {
    setWindowTitle(QStringLiteral("Tamrick Help"));
    resize(760, 640);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* bar = new QToolBar(this);
    bar->addAction(QStringLiteral("Back"), m_browser, &QTextBrowser::backward);
    bar->addAction(QStringLiteral("Contents"), m_browser, &QTextBrowser::home);
    layout->addWidget(bar);
    layout->addWidget(m_browser);
    m_browser->setOpenExternalLinks(true);
    m_browser->setSource(QUrl(QString::fromLatin1(kHelpPage)));
}

bool HelpWindow::HasPage() const {
    return QFile::exists(QStringLiteral(":/help/Cadrethe.htm"));
}
