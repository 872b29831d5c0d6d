#include "dialogs/CEdgeDlg.h"

#include "dialogs/NumberTriple.h"
#include "ops/ImageCommands.h"

#include <QButtonGroup>
#include <QFormLayout>
#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

CEdgeDlg::CEdgeDlg(bool isContour, QWidget* parent)
    : CommandDialog(isContour ? QStringLiteral("Trace Contour Filter") : QStringLiteral("Find Edge Filter"),
                    parent),
      m_isContour(isContour) {
    const FilterOptions d = DefaultFilterOptions(isContour ? kTraceContour : kFindEdge);
    if (isContour) {
        m_edgeMethod = AddPair(QStringLiteral("Edge Method"), QStringLiteral("Get The Lightest Edge"),
                               QStringLiteral("Get The Darkest Edge"), d.darkestEdge);
        m_colorMode = AddPair(QStringLiteral("Color"), QStringLiteral("Default"),
                              QStringLiteral("Foreground Color"), d.colorMode);
        // The group title ends in a blank on this dialog.
        m_background = AddPair(QStringLiteral("Background "), QStringLiteral("Background Color"),
                               QStringLiteral("Original Image"), d.keepOriginal);
    } else {
        m_colorMode = AddPair(QStringLiteral("Edge"), QStringLiteral("Default Line"),
                              QStringLiteral("Darken Color"), d.colorMode);
        m_background = AddPair(QStringLiteral("Background"), QStringLiteral("Background Color"),
                               QStringLiteral("Original Image"), d.keepOriginal);
    }
    auto* form = new QFormLayout;
    m_transparency = AddNumber(form, QStringLiteral("Transparent :"), 0, 100, d.transparency, 10);
    Body()->addLayout(form);
}

QButtonGroup* CEdgeDlg::AddPair(const QString& title, const QString& first, const QString& second,
                                int checked) {
    auto* box = new QGroupBox(title);
    auto* layout = new QVBoxLayout(box);
    auto* group = new QButtonGroup(this);
    int id = 0;
    for (const QString& text : {first, second}) {
        auto* button = new QRadioButton(text);
        group->addButton(button, id++);
        layout->addWidget(button);
    }
    group->button(checked)->setChecked(true);
    Body()->addWidget(box);
    return group;
}

std::vector<int> CEdgeDlg::CommandValues() const {
    const int keepOriginal = m_background->checkedId();
    const int colorMode = m_colorMode->checkedId();
    const int transparency = m_transparency->Value();
    if (m_isContour) {
        return {m_edgeMethod->checkedId(), keepOriginal, colorMode, transparency};
    }
    return {keepOriginal, colorMode, transparency};
}
