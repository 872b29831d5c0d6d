#include "app/ToolPalette.h"

#include "app/ToolIcons.h"
#include "dialogs/PenShapeDialog.h"

#include <QActionGroup>
#include <QButtonGroup>
#include <QColor>
#include <QEvent>
#include <QMenu>
#include <QShortcut>
#include <QToolButton>

namespace {
QString LabelOf(int id) {
    return QString::fromStdString(tools::Label(id));
}

QString WithShortcut(const QString& tip, const std::string& shortcut) {
    return tip + QStringLiteral(" (") + QString::fromStdString(shortcut) + QLatin1Char(')');
}

QString ButtonTip(int button, int member) {
    // The two zoom tools share one button labelled for the group.
    const QString tip = button == 4
                            ? LabelOf(tools::kZoomToolGroupLabel) + QStringLiteral(": ") + LabelOf(member)
                            : LabelOf(member);
    return WithShortcut(tip, ToolPalette::ButtonShortcut(button));
}

const char* const kColorNames[] = {"Foreground color", "Background color"};

const char* const kShapeNames[] = {"Rect", "Oval", "HLine", "VLine", "Slash", "BSlash"};
constexpr int kPenSizes[] = {1, 2, 3, 4, 5, 6, 8, 10, 12, 16, 20, 24, 32};
} // namespace

ToolPalette::ToolPalette(ColorWord foreground, ColorWord background, int penSize, int penShape,
                         QWidget* parent)
    : QToolBar(QStringLiteral("Tool Bar"), parent), m_group(new QButtonGroup(this)), m_penSize(penSize),
      m_penShape(penShape) {
    setObjectName(QStringLiteral("ToolPalette"));
    setIconSize(QSize(28, 28));
    setAllowedAreas(Qt::AllToolBarAreas);
    m_group->setExclusive(true);
    for (int button = 0; button < tools::kPaletteButtons; ++button) {
        const std::vector<int> members = tools::ButtonMembers(button);
        m_remembered[static_cast<std::size_t>(button)] = members.front();
        auto* toolButton = new QToolButton(this);
        toolButton->setCheckable(true);
        toolButton->setAutoRaise(true);
        toolButton->setShortcut(QKeySequence(QString::fromStdString(ButtonShortcut(button))));
        m_buttons[static_cast<std::size_t>(button)] = toolButton;
        m_group->addButton(toolButton, button);
        addWidget(toolButton);
        ShowMember(button);
        connect(toolButton, &QToolButton::clicked, this, [this, button] { OnButtonClicked(button); });
    }
    m_buttons[0]->setChecked(true);
    addSeparator();

    m_colors[0] = foreground;
    m_colors[1] = background;
    m_foreground = new QToolButton(this);
    m_background = new QToolButton(this);
    for (int slot = 0; slot < 2; ++slot) {
        QToolButton* swatch = ColorButton(slot);
        swatch->setAccessibleName(QString::fromUtf8(kColorNames[slot]));
        swatch->setToolTip(
            WithShortcut(QString::fromUtf8(kColorNames[slot]) + QStringLiteral(" (double click to change)"),
                         ColorShortcut(slot)));
        auto* change = new QShortcut(QKeySequence(QString::fromStdString(ColorShortcut(slot))), swatch);
        connect(change, &QShortcut::activated, this, [this, slot] {
            SetCurrentSlot(slot);
            emit ColorChangeRequested(slot);
        });
        swatch->setAutoRaise(true);
        swatch->installEventFilter(this);
        addWidget(swatch);
        connect(swatch, &QToolButton::clicked, this, [this, slot] { SetCurrentSlot(slot); });
    }
    SetColors(foreground, background);
    addSeparator();

    m_pen = new QToolButton(this);
    m_pen->setToolTip(QStringLiteral("Pen shape and size"));
    m_pen->setAccessibleName(m_pen->toolTip());
    m_pen->setPopupMode(QToolButton::InstantPopup);
    addWidget(m_pen);
    BuildPenMenu();

    m_options = new QToolButton(this);
    m_options->setIcon(icons::ToolOptions());
    m_options->setToolTip(LabelOf(tools::kToolOptionsLabel));
    m_options->setAccessibleName(m_options->toolTip());
    m_options->setAutoRaise(true);
    addWidget(m_options);
    connect(m_options, &QToolButton::clicked, this, &ToolPalette::OptionsRequested);
}

std::string ToolPalette::ButtonShortcut(int button) {
    return "Ctrl+" + std::to_string(button + 1);
}

std::string ToolPalette::ColorShortcut(int slot) {
    return slot == 0 ? "Ctrl+Shift+F" : "Ctrl+Shift+B";
}

void ToolPalette::ShowMember(int button) {
    const int member = m_remembered[static_cast<std::size_t>(button)];
    QToolButton* toolButton = m_buttons[static_cast<std::size_t>(button)];
    const bool group = tools::ButtonMembers(button).size() > 1;
    toolButton->setIcon(group ? icons::ForGroupMember(member) : icons::ForTool(member));
    toolButton->setToolTip(ButtonTip(button, member));
    toolButton->setAccessibleName(LabelOf(member));
}

void ToolPalette::OnButtonClicked(int button) {
    if (button == m_highlighted) {
        m_buttons[static_cast<std::size_t>(button)]->setChecked(true);
        if (tools::ButtonMembers(button).size() > 1) {
            OpenGroup(button);
        }
        return;
    }
    SelectButton(button);
    emit ToolChosen(m_remembered[static_cast<std::size_t>(button)]);
}

void ToolPalette::SelectButton(int button) {
    m_highlighted = button;
    m_buttons[static_cast<std::size_t>(button)]->setChecked(true);
}

void ToolPalette::OpenGroup(int button) {
    delete m_groupList;
    m_groupList = new QMenu(this);
    m_groupList->setAttribute(Qt::WA_DeleteOnClose, false);
    for (int member : tools::ButtonMembers(button)) {
        QAction* action = m_groupList->addAction(icons::ForTool(member), LabelOf(member));
        action->setCheckable(true);
        action->setChecked(member == m_remembered[static_cast<std::size_t>(button)]);
        connect(action, &QAction::triggered, this, [this, button, member] {
            m_remembered[static_cast<std::size_t>(button)] = member;
            ShowMember(button);
            emit ToolChosen(member);
        });
    }
    QToolButton* anchor = m_buttons[static_cast<std::size_t>(button)];
    m_groupList->popup(anchor->mapToGlobal(QPoint(anchor->width(), 0)));
}

void ToolPalette::HighlightTool(int toolId) {
    const int button = tools::ButtonOf(toolId);
    if (button < 0) {
        return;
    }
    m_remembered[static_cast<std::size_t>(button)] = toolId;
    ShowMember(button);
    SelectButton(button);
}

void ToolPalette::SetColors(ColorWord foreground, ColorWord background) {
    m_colors[0] = foreground;
    m_colors[1] = background;
    m_foreground->setIcon(icons::ColorSwatch(foreground, m_currentSlot == 0));
    m_background->setIcon(icons::ColorSwatch(background, m_currentSlot == 1));
    for (int slot = 0; slot < 2; ++slot) {
        const ColorWord color = m_colors[slot];
        ColorButton(slot)->setAccessibleDescription(
            QColor(RedOf(color), GreenOf(color), BlueOf(color)).name());
    }
}

void ToolPalette::SetCurrentSlot(int slot) {
    if (slot == m_currentSlot) {
        return;
    }
    m_currentSlot = slot;
    SetColors(m_colors[0], m_colors[1]);
    emit CurrentColorSlotChanged(slot);
}

void ToolPalette::SetOptionsAvailable(bool available) {
    m_options->setEnabled(available);
}

bool ToolPalette::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonDblClick &&
        (watched == m_foreground || watched == m_background)) {
        const int slot = watched == m_foreground ? 0 : 1;
        SetCurrentSlot(slot);
        emit ColorChangeRequested(slot);
        return true;
    }
    return QToolBar::eventFilter(watched, event);
}

void ToolPalette::BuildPenMenu() {
    auto* menu = new QMenu(m_pen);
    auto* shapes = new QActionGroup(menu);
    for (int shape = 1; shape <= 6; ++shape) {
        QAction* action =
            menu->addAction(icons::PenShape(shape, 16), QString::fromUtf8(kShapeNames[shape - 1]));
        action->setCheckable(true);
        action->setChecked(shape == m_penShape);
        shapes->addAction(action);
        connect(action, &QAction::triggered, this, [this, shape] {
            m_penShape = shape;
            m_pen->setIcon(icons::PenShape(m_penShape, m_penSize));
            emit PenChosen(m_penSize, m_penShape);
        });
    }
    menu->addSeparator();
    auto* sizes = new QActionGroup(menu);
    for (int size : kPenSizes) {
        QAction* action = menu->addAction(QStringLiteral("%1 pixel%2").arg(size).arg(size == 1 ? "" : "s"));
        action->setCheckable(true);
        action->setChecked(size == m_penSize);
        sizes->addAction(action);
        connect(action, &QAction::triggered, this, [this, size] {
            m_penSize = size;
            m_pen->setIcon(icons::PenShape(m_penShape, m_penSize));
            emit PenChosen(m_penSize, m_penShape);
        });
    }
    sizes->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    menu->addSeparator();
    QAction* dialog = menu->addAction(QStringLiteral("Pen shape and size..."));
    connect(dialog, &QAction::triggered, this, [this, shapes, sizes] {
        PenShapeDialog choose(m_penSize, m_penShape, this);
        if (choose.exec() != QDialog::Accepted) {
            return;
        }
        m_penSize = choose.PenSize();
        m_penShape = choose.PenShape();
        for (int i = 0; i < shapes->actions().size(); ++i) {
            shapes->actions()[i]->setChecked(i + 1 == m_penShape);
        }
        for (int i = 0; i < sizes->actions().size(); ++i) {
            sizes->actions()[i]->setChecked(kPenSizes[i] == m_penSize);
        }
        m_pen->setIcon(icons::PenShape(m_penShape, m_penSize));
        emit PenChosen(m_penSize, m_penShape);
    });
    m_pen->setMenu(menu);
    m_pen->setIcon(icons::PenShape(m_penShape, m_penSize));
}
