#pragma once

#include <QWidget>

class QTextBrowser;

// The help window: the bundled user guide "Cadrethe.htm" with its links.
class HelpWindow : public QWidget {
    Q_OBJECT
public:
    static constexpr const char* kHelpPage = "qrc:/help/Cadrethe.htm";

    explicit HelpWindow(QWidget* parent = nullptr);
    QTextBrowser* Browser() const { return m_browser; }
    bool HasPage() const;

private:
    QTextBrowser* m_browser;
};
