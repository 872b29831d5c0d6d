#include "dialogs/CEmbossDlg.h"

#include "dialogs/NumberTriple.h"
#include "ops/ImageCommands.h"

#include <QButtonGroup>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QRadioButton>

namespace {
struct DirectionButton {
    int row;
    int column;
    const char* name;
};
// Indexed by direction: where its button sits in the grid.
constexpr DirectionButton kButtons[8] = {
    {0, 0, "Top Left"},     {0, 1, "Top"},    {0, 2, "Top Right"},   {1, 0, "Left"},
    {2, 2, "Bottom Right"}, {2, 1, "Bottom"}, {2, 0, "Bottom Left"}, {1, 2, "Right"},
};
} // namespace

CEmbossDlg::CEmbossDlg(QWidget* parent)
    : CommandDialog(QStringLiteral("Emboss Filter Dialog"), parent), m_directions(new QButtonGroup(this)) {
    const FilterOptions defaults = DefaultFilterOptions(kEmboss);
    auto* group = new QGroupBox(QStringLiteral("Direction"));
    auto* grid = new QGridLayout(group);
    for (int direction = 0; direction < 8; ++direction) {
        auto* button = new QRadioButton;
        button->setToolTip(QString::fromLatin1(kButtons[direction].name));
        button->setAccessibleName(button->toolTip());
        m_directions->addButton(button, direction);
        grid->addWidget(button, kButtons[direction].row, kButtons[direction].column, Qt::AlignCenter);
    }
    Body()->addWidget(group);
    auto* form = new QFormLayout;
    m_depth = AddNumber(form, QStringLiteral("Depth :"), 1, 10, defaults.depth, 2);
    Body()->addLayout(form);
    SetDirection(defaults.direction);
}

int CEmbossDlg::Direction() const {
    return m_directions->checkedId();
}

QAbstractButton* CEmbossDlg::DirectionButton(int direction) const {
    return m_directions->button(direction);
}

void CEmbossDlg::SetDirection(int direction) {
    if (QAbstractButton* button = DirectionButton(direction)) {
        button->setChecked(true);
    }
}

std::vector<int> CEmbossDlg::CommandValues() const {
    return {Direction(), m_depth->Value()};
}
