#include "app/ToolIcons.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <algorithm>
#include <functional>

// Resources of a static library are registered by hand, outside any namespace.
static void InitApplicationIconResource() {
    Q_INIT_RESOURCE(appicon);
}

namespace icons {

namespace {
const QColor kInk(0x30, 0x34, 0x3C);
const QColor kAccent(0x2A, 0x6F, 0xD6);

QPen Dashed() {
    QPen pen(kInk, 1.6, Qt::DashLine);
    pen.setDashPattern({2.5, 2.0});
    return pen;
}

void Nib(QPainter& p, const QColor& body, const QColor& tip) {
    QPainterPath path;
    path.moveTo(24, 4);
    path.lineTo(28, 8);
    path.lineTo(11, 25);
    path.lineTo(7, 21);
    path.closeSubpath();
    p.setPen(QPen(kInk, 1.4));
    p.setBrush(body);
    p.drawPath(path);
    QPainterPath point;
    point.moveTo(7, 21);
    point.lineTo(11, 25);
    point.lineTo(4, 28);
    point.closeSubpath();
    p.setBrush(tip);
    p.drawPath(point);
}

void Magnifier(QPainter& p, bool plus) {
    p.setPen(QPen(kInk, 2.4));
    p.setBrush(QColor(0xE8, 0xF0, 0xFF));
    p.drawEllipse(QRectF(4, 4, 17, 17));
    p.drawLine(QPointF(19, 19), QPointF(28, 28));
    p.setPen(QPen(kAccent, 2.2));
    p.drawLine(QPointF(8.5, 12.5), QPointF(16.5, 12.5));
    if (plus) {
        p.drawLine(QPointF(12.5, 8.5), QPointF(12.5, 16.5));
    }
}

QColor PenColor(int toolId) {
    static const QColor colors[] = {
        QColor(0x22, 0x22, 0x22), QColor(0xF2, 0xA0, 0xB0), QColor(0x9A, 0xC8, 0xF0),
        QColor(0xA0, 0xA0, 0xA0), QColor(0xF0, 0xF0, 0xF0), QColor(0x50, 0x50, 0x50),
        QColor(0xC0, 0xC0, 0xC0), QColor(0x40, 0x90, 0x40), QColor(0xE0, 0x60, 0x20),
        QColor(0x4A, 0x90, 0xE0), QColor(0xC0, 0x8A, 0x40), QColor(0xE8, 0xD0, 0x60),
        QColor(0x30, 0x30, 0x30), QColor(0xF8, 0xF8, 0xF0), QColor(0xA0, 0x40, 0xC0),
        QColor(0xD0, 0x30, 0x60)};
    return colors[std::clamp(toolId - 33009, 0, 15)];
}

void DrawTool(QPainter& p, int id) {
    p.setPen(QPen(kInk, 1.8));
    p.setBrush(Qt::NoBrush);
    switch (id) {
    case 33000:
        p.setPen(Dashed());
        p.drawRect(QRectF(5, 7, 22, 18));
        break;
    case 33001:
        p.setPen(Dashed());
        p.drawEllipse(QRectF(4, 7, 24, 18));
        break;
    case 33002:
        p.setPen(Dashed());
        p.drawRect(QRectF(5, 7, 18, 16));
        Nib(p, kAccent, kInk);
        break;
    case 33003: {
        // A free-hand loop with corners and a dent, and the pen that drew it.
        QPainterPath loop;
        loop.moveTo(5, 18);
        loop.lineTo(4, 9);
        loop.cubicTo(8, 3, 14, 8, 17, 4);
        loop.lineTo(24, 7);
        loop.cubicTo(21, 12, 27, 14, 23, 19);
        loop.lineTo(13, 20);
        loop.closeSubpath();
        p.setPen(Dashed());
        p.drawPath(loop);
        p.setPen(QPen(kInk, 1.6));
        p.setBrush(kAccent);
        p.drawPolygon(QPolygonF({{13, 20}, {22, 29}, {19, 31}, {11, 23}}));
        break;
    }
    case 33004:
        p.setPen(QPen(kInk, 3));
        p.drawLine(QPointF(6, 27), QPointF(20, 13));
        p.setPen(QPen(QColor(0xE8, 0xB0, 0x20), 2));
        for (const auto& ray :
             {QLineF(23, 4, 23, 8), QLineF(27, 10, 31, 10), QLineF(24, 12, 28, 16), QLineF(17, 6, 14, 3)}) {
            p.drawLine(ray);
        }
        break;
    case 33005:
    case 33031: {
        p.setPen(QPen(id == 33005 ? kAccent : kInk, 2));
        p.drawLine(QPointF(16, 3), QPointF(16, 29));
        p.drawLine(QPointF(3, 16), QPointF(29, 16));
        for (const auto& head :
             {QPolygonF({{16, 2}, {12, 7}, {20, 7}}), QPolygonF({{16, 30}, {12, 25}, {20, 25}}),
              QPolygonF({{2, 16}, {7, 12}, {7, 20}}), QPolygonF({{30, 16}, {25, 12}, {25, 20}})}) {
            p.setBrush(p.pen().color());
            p.drawPolygon(head);
        }
        if (id == 33005) {
            p.setPen(Dashed());
            p.setBrush(Qt::NoBrush);
            p.drawRect(QRectF(9, 9, 14, 14));
        }
        break;
    }
    case 33006:
        p.setBrush(QColor(0xC8, 0xDC, 0xF8));
        p.drawRect(QRectF(5, 8, 22, 16));
        break;
    case 33007:
        p.setBrush(QColor(0xC8, 0xDC, 0xF8));
        p.drawEllipse(QRectF(4, 8, 24, 16));
        break;
    case 33008:
        p.setPen(QPen(kInk, 2.4, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(5, 27), QPointF(27, 5));
        break;
    case 33010:
        p.setBrush(QColor(0xF4, 0x9A, 0xA8));
        p.drawRoundedRect(QRectF(5, 12, 22, 11), 3, 3);
        p.setBrush(QColor(0xF8, 0xF8, 0xF8));
        p.drawRoundedRect(QRectF(5, 12, 8, 11), 3, 3);
        break;
    case 33011:
        p.setBrush(QColor(0xB0, 0xB8, 0xC4));
        p.drawRoundedRect(QRectF(14, 12, 14, 16), 3, 3);
        p.setPen(Qt::NoPen);
        p.setBrush(kAccent);
        for (const auto& dot : {QPointF(6, 8), QPointF(10, 5), QPointF(4, 13), QPointF(9, 11), QPointF(12, 8),
                                QPointF(7, 16), QPointF(3, 6)}) {
            p.drawEllipse(dot, 1.3, 1.3);
        }
        break;
    case 33025: {
        QPainterPath bucket;
        bucket.moveTo(8, 12);
        bucket.lineTo(20, 6);
        bucket.lineTo(26, 18);
        bucket.lineTo(14, 24);
        bucket.closeSubpath();
        p.setBrush(QColor(0xE0, 0xE4, 0xEC));
        p.drawPath(bucket);
        p.setBrush(kAccent);
        p.setPen(Qt::NoPen);
        p.drawEllipse(QRectF(4, 20, 7, 9));
        break;
    }
    case 33026: {
        QLinearGradient ramp(4, 0, 28, 0);
        ramp.setColorAt(0, kAccent);
        ramp.setColorAt(1, Qt::white);
        p.setBrush(ramp);
        p.drawRect(QRectF(4, 8, 24, 16));
        break;
    }
    case 33028:
    case 33029:
        Magnifier(p, id == 33028);
        break;
    case 33030: {
        QFont font(QStringLiteral("DejaVu Serif"));
        font.setPixelSize(24);
        font.setBold(true);
        p.setFont(font);
        p.drawText(QRectF(0, 0, 32, 32), Qt::AlignCenter, QStringLiteral("A"));
        break;
    }
    case 33034: {
        // A rubber stamp: knob, neck and pad, over the print it leaves.
        p.setPen(QPen(kInk, 1.6));
        p.setBrush(QColor(0xC8, 0x8A, 0x50));
        p.drawEllipse(QRectF(11, 2, 10, 9));
        p.drawRect(QRectF(14, 10, 4, 7));
        p.setBrush(QColor(0x70, 0x78, 0x88));
        p.drawRoundedRect(QRectF(6, 17, 20, 6), 2, 2);
        p.setPen(QPen(kAccent, 2.2));
        p.drawLine(QPointF(6, 28), QPointF(26, 28));
        break;
    }
    case 33032: {
        p.setPen(QPen(kInk, 1.6));
        p.setBrush(QColor(0xD8, 0xDC, 0xE4));
        QPainterPath dropper;
        dropper.moveTo(20, 6);
        dropper.lineTo(26, 12);
        dropper.lineTo(11, 27);
        dropper.lineTo(5, 27);
        dropper.lineTo(5, 21);
        dropper.closeSubpath();
        p.drawPath(dropper);
        p.setBrush(kInk);
        p.drawEllipse(QRectF(20, 2, 10, 10));
        break;
    }
    default:
        Nib(p, PenColor(id), kInk);
        break;
    }
}
} // namespace

QIcon Paint(const std::function<void(QPainter&)>& draw) {
    QIcon icon;
    for (int scale : {1, 2}) {
        QPixmap pixmap(32 * scale, 32 * scale);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(scale, scale);
        draw(painter);
        icon.addPixmap(pixmap);
    }
    return icon;
}

QIcon ForTool(int toolId) {
    return Paint([toolId](QPainter& p) { DrawTool(p, toolId); });
}

QIcon ForGroupMember(int toolId) {
    return Paint([toolId](QPainter& p) {
        DrawTool(p, toolId);
        p.setPen(Qt::NoPen);
        p.setBrush(kInk);
        p.drawPolygon(QPolygonF({{31, 26}, {31, 31}, {26, 31}}));
    });
}

namespace {
// A disabled button shows its icon faded, so it does not look pressable.
QIcon WithFadedDisabled(QIcon icon) {
    for (const QSize& size : icon.availableSizes()) {
        QImage faded = icon.pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < faded.height(); ++y) {
            auto* pixel = reinterpret_cast<QRgb*>(faded.scanLine(y));
            for (int x = 0; x < faded.width(); ++x) {
                const int grey = qGray(pixel[x]);
                pixel[x] = qRgba(grey, grey, grey, qAlpha(pixel[x]) / 3);
            }
        }
        icon.addPixmap(QPixmap::fromImage(faded), QIcon::Disabled);
    }
    return icon;
}
} // namespace

QIcon ToolOptions() {
    return WithFadedDisabled(Paint([](QPainter& p) {
        p.setPen(QPen(kInk, 1.8));
        for (int row = 0; row < 3; ++row) {
            const qreal y = 8 + row * 8;
            p.drawLine(QPointF(4, y), QPointF(28, y));
            p.setBrush(row == 1 ? kAccent : QColor(0xF0, 0xF0, 0xF0));
            p.drawEllipse(QPointF(row == 1 ? 20 : 11, y), 3.5, 3.5);
        }
    }));
}

// The installed icon's rendered sizes, compiled in as ":/appicon/SIZE.png".
QIcon Application() {
    InitApplicationIconResource();
    QIcon icon;
    const QDir folder(QStringLiteral(":/appicon"));
    for (const QString& name : folder.entryList(QDir::Files)) {
        const int size = QFileInfo(name).baseName().toInt();
        icon.addFile(folder.filePath(name), QSize(size, size));
    }
    return icon;
}

QIcon ColorSwatch(ColorWord color, bool current) {
    return Paint([color, current](QPainter& p) {
        p.setPen(QPen(current ? kAccent : kInk, current ? 3 : 1.2));
        p.setBrush(QColor(RedOf(color), GreenOf(color), BlueOf(color)));
        p.drawRoundedRect(QRectF(4, 4, 24, 24), 3, 3);
    });
}

QIcon PenShape(int shape, int size) {
    return Paint([shape, size](QPainter& p) {
        const qreal extent = 4 + std::clamp(size, 1, 32) * 20.0 / 32.0;
        const QRectF box(16 - extent / 2, 16 - extent / 2, extent, extent);
        p.setPen(QPen(kInk, 2, Qt::SolidLine, Qt::RoundCap));
        p.setBrush(kInk);
        switch (shape) {
        case 1:
            p.drawRect(box);
            break;
        case 3:
            p.drawLine(QPointF(box.left(), 16), QPointF(box.right(), 16));
            break;
        case 4:
            p.drawLine(QPointF(16, box.top()), QPointF(16, box.bottom()));
            break;
        case 5:
            p.drawLine(box.bottomLeft(), box.topRight());
            break;
        case 6:
            p.drawLine(box.topLeft(), box.bottomRight());
            break;
        default:
            p.drawEllipse(box);
            break;
        }
    });
}

} // namespace icons
