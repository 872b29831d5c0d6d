#include "app/HelpWindow.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QFile>
#include <QKeySequence>
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

    // Closes as any window does: its button, Esc and the standard Close key.
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->setContentsMargins(8, 0, 8, 8);
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    layout->addWidget(buttons);
    auto* close = new QAction(this);
    QList<QKeySequence> keys = QKeySequence::keyBindings(QKeySequence::Close);
    for (const QKeySequence& key : {QKeySequence(Qt::Key_Escape), QKeySequence(QStringLiteral("Ctrl+W"))}) {
        if (!keys.contains(key)) {
            keys.append(key); // one binding twice would make the key ambiguous
        }
    }
    close->setShortcuts(keys);
    connect(close, &QAction::triggered, this, &QWidget::close);
    addAction(close);
}

bool HelpWindow::HasPage() const {
    return QFile::exists(QStringLiteral(":/help/Cadrethe.htm"));
}
