#include "app/StatusDisplay.h"

#include "image/CBriselDoc.h"

#include <QLabel>
#include <QStatusBar>

StatusDisplay::StatusDisplay(QStatusBar& bar, const CBriselDoc& doc)
    : QObject(&bar), m_doc(doc), m_pointer(new QLabel(&bar)), m_selection(new QLabel(&bar)),
      m_picture(new QLabel(&bar)) {
    m_pointer->setObjectName(QStringLiteral("PointerStatus"));
    m_selection->setObjectName(QStringLiteral("SelectionStatus"));
    m_picture->setObjectName(QStringLiteral("PictureStatus"));
    m_pointer->setMinimumWidth(m_pointer->fontMetrics().horizontalAdvance(QStringLiteral("00000, 00000")));
    m_selection->setMinimumWidth(
        m_selection->fontMetrics().horizontalAdvance(QStringLiteral("00000 x 00000")));
    bar.addPermanentWidget(m_pointer);
    bar.addPermanentWidget(m_selection);
    bar.addPermanentWidget(m_picture);
}

void StatusDisplay::ShowPointer(QPoint image) {
    const CDibImage* picture = m_doc.GetPicture();
    const bool inside = picture != nullptr && image.x() >= 0 && image.y() >= 0 && image.x() < picture->Width() &&
                        image.y() < picture->Height();
    m_pointer->setText(inside ? QStringLiteral("%1, %2").arg(image.x()).arg(image.y()) : QString());
}

void StatusDisplay::ClearPointer() {
    m_pointer->clear();
}

void StatusDisplay::ShowDocument(int zoom) {
    const CDibImage* picture = m_doc.GetPicture();
    if (picture == nullptr) {
        return;
    }
    const QString scale = zoom >= 1 ? QStringLiteral("%1%").arg(zoom * 100) : QStringLiteral("1/%1").arg(-zoom);
    m_picture->setText(
        QStringLiteral("%1 x %2 pixels   %3").arg(picture->Width()).arg(picture->Height()).arg(scale));
    const ImageRect box = m_doc.GetFloatRect();
    const bool selected = m_doc.GetFloatMask() != nullptr;
    m_selection->setText(selected ? QStringLiteral("%1 x %2").arg(box.right - box.left).arg(box.bottom - box.top)
                                  : QString());
}

QString StatusDisplay::PointerText() const {
    return m_pointer->text();
}

QString StatusDisplay::SelectionText() const {
    return m_selection->text();
}

QString StatusDisplay::PictureText() const {
    return m_picture->text();
}
