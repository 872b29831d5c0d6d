#pragma once

#include <QObject>
#include <QPoint>

class CBriselDoc;
class QLabel;
class QStatusBar;

// The status bar's permanent fields: the image pixel under the pointer (blank
// outside the picture), the selection's size while one exists, and the
// picture's size with the zoom.
class StatusDisplay : public QObject {
    Q_OBJECT
public:
    StatusDisplay(QStatusBar& bar, const CBriselDoc& doc);

    void ShowPointer(QPoint image);
    void ClearPointer();
    // Picture size, zoom and selection size, after any change of the document or the zoom.
    void ShowDocument(int zoom);

    QString PointerText() const;
    QString SelectionText() const;
    QString PictureText() const;

private:
    const CBriselDoc& m_doc;
    QLabel* m_pointer;
    QLabel* m_selection;
    QLabel* m_picture;
};
