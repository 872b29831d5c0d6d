#pragma once

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QPixmap>
#include <memory>

class CBriselDoc;
class CBriselView;
class ViewHost;

// The one scrolling window of the program. It stays on screen for the whole
// run and hands every input event to the view object bound to it (the current
// tool). Coordinates handed to the view are device pixels, so a picture shown
// at actual size stays crisp on high-density screens.
class CViewWindow : public QAbstractScrollArea {
    Q_OBJECT
public:
    static constexpr int kOutlineTimerId = 1;
    static constexpr int kOutlinePeriodMs = 200;

    explicit CViewWindow(QWidget* parent = nullptr);
    ~CViewWindow() override;

    CBriselView* View() const { return m_view.get(); }
    // Binds `view` and returns the object that was bound before.
    std::unique_ptr<CBriselView> ReplaceView(std::unique_ptr<CBriselView> view);

    // Services for the view object.
    QSize ClientSize() const;
    // The client size the picture would have without scroll bars.
    QSize ClientSizeWithoutBars() const;
    int ScrollX() const;
    int ScrollY() const;
    bool HasHorizontalBar() const;
    bool HasVerticalBar() const;
    int MaxScrollX() const;
    int MaxScrollY() const;
    void SetScrollTotals(int totalWidth, int totalHeight);
    void SetScrollPosition(int x, int y);
    void InvalidateClient(const QRect& rect);
    void InvalidateAll();
    void UpdateNow();
    void StartOutlineTimer();
    void StopOutlineTimer();
    bool OutlineTimerActive() const { return m_outlineTimer.isActive(); }
    qreal DeviceRatio() const;
    // The background pattern shown around the picture.
    static QPixmap BackgroundPattern();

signals:
    // A file was dropped on the window.
    void FileDropped(const QString& path);
    // The picture pixel under the pointer (possibly outside the picture).
    void PointerMoved(QPoint imagePoint);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void tabletEvent(QTabletEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void OnScrollAction(Qt::Orientation orientation, int action);
    QPoint ToDevice(const QPointF& logical) const;
    void ZoomAroundPointer(const QPointF& position, bool zoomIn);

    std::unique_ptr<CBriselView> m_view;
    QBasicTimer m_outlineTimer;
    bool m_tabletPenDown = false;
    bool m_snapping = false;
};
