#pragma once

#include <QWidget>

class CBriselDoc;
class CDisplayRenderer;

// Shows the picture alone on the whole screen, reduced to fit when it is
// larger. A tap, a click or Esc ends it.
class FullScreenWindow : public QWidget {
    Q_OBJECT
public:
    FullScreenWindow(CDisplayRenderer& renderer, const CBriselDoc* doc);

    // Shows the window and returns when the user has closed it.
    void RunModal();
    bool IsClosed() const { return m_closed; }

    // The reduction that makes a w x h picture fit a screen of sw x sh: 1 when
    // it fits, else max(w / sw + 1, h / sh + 1).
    static int FitReduction(int width, int height, int screenWidth, int screenHeight);

signals:
    void Closed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void tabletEvent(QTabletEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Finish();

    CDisplayRenderer& m_renderer;
    const CBriselDoc* m_doc;
    bool m_closed = false;
};
