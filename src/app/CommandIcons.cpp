#include "app/CommandIcons.h"

#include "app/CommandIds.h"
#include "app/CommandTable.h"
#include "app/ToolIcons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QRegularExpression>
#include <map>
#include <set>

namespace icons {

namespace {

// Standard names of the freedesktop icon naming scheme (and the common
// extensions of the big themes) for the commands that have one.
const std::map<int, const char*>& ThemeNames() {
    static const std::map<int, const char*> names = {
        {cmd::kNew, "document-new"},
        {cmd::kOpen, "document-open"},
        {cmd::kSave, "document-save"},
        {cmd::kSaveAs, "document-save-as"},
        {cmd::kRevert, "document-revert"},
        {cmd::kSendMail, "mail-send"},
        {cmd::kOptions, "preferences-system"},
        {cmd::kExit, "application-exit"},
        {cmd::kHelp, "help-contents"},
        {cmd::kAbout, "help-about"},
        {cmd::kUndo, "edit-undo"},
        {cmd::kRedo, "edit-redo"},
        {cmd::kCut, "edit-cut"},
        {cmd::kCopy, "edit-copy"},
        {cmd::kPaste, "edit-paste"},
        {cmd::kClear, "edit-clear"},
        {cmd::kSelectAll, "edit-select-all"},
        {cmd::kSelectNone, "edit-select-none"},
        {cmd::kInvertSelection, "edit-select-invert"},
        {cmd::kCrop, "transform-crop"},
        {cmd::kActualImage, "zoom-original"},
        {cmd::kFitInWindow, "zoom-fit-best"},
        {cmd::kZoomIn, "zoom-in"},
        {cmd::kZoomOut, "zoom-out"},
        {cmd::kFullScreen, "view-fullscreen"},
        {cmd::kPixelGrid, "view-grid"},
        {cmd::kImageInformation, "document-properties"},
        {cmd::kSystemInformation, "computer"},
        {32800, "object-flip-horizontal"},
        {32801, "object-flip-vertical"},
        {32799, "object-rotate-right"},
        {32798, "object-rotate-left"},
    };
    return names;
}

QColor MenuColor(const char* menu) {
    const QString name = QString::fromUtf8(menu != nullptr ? menu : "");
    if (name == QLatin1String("File")) {
        return QColor(0x4A, 0x7A, 0xC0);
    }
    if (name == QLatin1String("Edit")) {
        return QColor(0x3C, 0x96, 0x6E);
    }
    if (name == QLatin1String("View")) {
        return QColor(0x7A, 0x5C, 0xB0);
    }
    if (name == QLatin1String("Image")) {
        return QColor(0xC0, 0x6A, 0x2A);
    }
    if (name == QLatin1String("Filter")) {
        return QColor(0xB0, 0x3A, 0x5A);
    }
    return QColor(0x55, 0x5C, 0x66);
}

// The first letter of each word, at most `count` of them; a single word
// gives its first two letters.
QString Initials(const QString& text, int count) {
    QString initials;
    bool wordStart = true;
    for (const QChar c : text) {
        if (c.isLetterOrNumber()) {
            if (wordStart && initials.size() < count) {
                initials += c.toUpper();
            }
            wordStart = false;
        } else {
            wordStart = c != QLatin1Char('&');
        }
    }
    if (initials.size() == 1 && count > 1) {
        const int at = text.indexOf(initials.at(0), 0, Qt::CaseInsensitive);
        if (at + 1 < text.size() && text.at(at + 1).isLetter()) {
            initials += text.at(at + 1).toLower();
        }
    }
    return initials;
}

// "x 16" and "/ 4" keep their number; other entries show their initials,
// the submenu's first.
QString MarkFor(const CommandEntry& entry) {
    const QString label = QString::fromUtf8(entry.label);
    if (label.startsWith(QLatin1String("x ")) || label.startsWith(QLatin1String("/ "))) {
        return QString(label).remove(QLatin1Char(' '));
    }
    if (entry.submenu == nullptr) {
        return Initials(label, 3);
    }
    return Initials(QString::fromUtf8(entry.submenu), 2) + Initials(label, 1).toLower();
}

// A mark already taken in the same menu takes one more letter of the label
// until it is unique there.
QString UniqueMark(const CommandEntry& entry, const std::set<QString>& taken) {
    QString mark = MarkFor(entry);
    const QString letters = QString::fromUtf8(entry.label).remove(QRegularExpression(QStringLiteral("[^A-Za-z0-9]")));
    for (int extra = 1; taken.count(mark) != 0 && extra < letters.size(); ++extra) {
        mark += letters.at(extra).toLower();
    }
    return mark;
}

const std::map<int, QString>& Marks() {
    static const std::map<int, QString> marks = [] {
        std::map<int, QString> result;
        std::map<QString, std::set<QString>> takenPerMenu;
        for (const CommandEntry& entry : CommandTable()) {
            std::set<QString>& taken = takenPerMenu[QString::fromUtf8(entry.menu != nullptr ? entry.menu : "")];
            const QString mark = UniqueMark(entry, taken);
            taken.insert(mark);
            result[entry.id] = mark;
        }
        return result;
    }();
    return marks;
}

// A curved arrow turning back (undo) or forward (redo).
QIcon DrawTurnArrow(bool back, const QColor& color) {
    return Paint([back, color](QPainter& painter) {
        if (!back) {
            painter.translate(32, 0);
            painter.scale(-1, 1);
        }
        QPainterPath arc;
        arc.moveTo(9, 13);
        arc.cubicTo(14, 6, 27, 7, 27, 17);
        arc.cubicTo(27, 24, 20, 27, 14, 26);
        painter.setPen(QPen(color, 3, Qt::SolidLine, Qt::RoundCap));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(arc);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawPolygon(QPolygonF({{3, 12}, {13, 6}, {12, 18}}));
    });
}

QIcon DrawBadge(const CommandIconLook& look) {
    return Paint([&look](QPainter& painter) {
        painter.setPen(QPen(look.color.darker(140), 1.2));
        painter.setBrush(look.color);
        painter.drawRoundedRect(QRectF(2, 2, 28, 28), 6, 6);
        QFont font = painter.font();
        font.setPixelSize(look.mark.size() > 2 ? 11 : 14);
        font.setBold(true);
        painter.setFont(font);
        painter.setPen(Qt::white);
        painter.drawText(QRectF(2, 2, 28, 28), Qt::AlignCenter, look.mark);
    });
}

// What is drawn when the theme has no icon: a picture for the commands that
// have an obvious one, else the badge.
QIcon Drawn(int id, const CommandIconLook& look) {
    switch (id) {
    case cmd::kUndo:
    case cmd::kRedo:
        return DrawTurnArrow(id == cmd::kUndo, look.color);
    case cmd::kZoomIn:
        return ForTool(33028);
    case cmd::kZoomOut:
        return ForTool(33029);
    default:
        return DrawBadge(look);
    }
}

} // namespace

CommandIconLook LookOfCommand(int id) {
    CommandIconLook look;
    const auto named = ThemeNames().find(id);
    if (named != ThemeNames().end()) {
        look.themeName = QString::fromUtf8(named->second);
    }
    if (const CommandEntry* entry = FindCommand(id)) {
        look.mark = Marks().at(id);
        look.color = MenuColor(entry->menu);
    }
    return look;
}

QIcon ForCommand(int id) {
    const CommandIconLook look = LookOfCommand(id);
    const QIcon drawn = Drawn(id, look);
    return look.themeName.isEmpty() ? drawn : QIcon::fromTheme(look.themeName, drawn);
}

} // namespace icons
