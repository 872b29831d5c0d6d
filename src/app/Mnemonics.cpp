#include "app/Mnemonics.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <map>
#include <vector>

namespace mnemonics {

namespace {

// Positions worth trying in order: starts of words first, then the rest.
std::vector<qsizetype> Candidates(const QString& label) {
    std::vector<qsizetype> starts;
    std::vector<qsizetype> others;
    for (qsizetype i = 0; i < label.size(); ++i) {
        if (!label[i].isLetterOrNumber()) {
            continue;
        }
        const bool wordStart = i == 0 || label[i - 1].isSpace();
        (wordStart ? starts : others).push_back(i);
    }
    starts.insert(starts.end(), others.begin(), others.end());
    return starts;
}

void ApplyToActions(const QList<QAction*>& actions) {
    QList<QAction*> named;
    QStringList labels;
    for (QAction* action : actions) {
        if (!action->isSeparator()) {
            named << action;
            labels << action->text();
        }
    }
    const QStringList marked = Assign(labels);
    for (qsizetype i = 0; i < named.size(); ++i) {
        named[i]->setText(marked[i]);
        if (QMenu* submenu = named[i]->menu()) {
            ApplyToActions(submenu->actions());
        }
    }
}

} // namespace

QChar Of(const QString& label) {
    for (qsizetype i = 0; i + 1 < label.size(); ++i) {
        if (label[i] == QLatin1Char('&')) {
            if (label[i + 1] != QLatin1Char('&')) {
                return label[i + 1].toLower();
            }
            ++i;
        }
    }
    return {};
}

namespace {

// Finds a letter for label `index`: its first free candidate, else one held
// by a label that can move to another of its own (an augmenting path of a
// bipartite matching), so that every label gets a letter whenever that is
// possible.
bool Place(int index, const std::vector<std::vector<QChar>>& wanted, std::map<QChar, int>& holder,
           std::vector<bool>& visited) {
    const std::vector<QChar>& letters = wanted[static_cast<std::size_t>(index)];
    for (const QChar letter : letters) {
        if (!holder.contains(letter)) {
            holder[letter] = index;
            return true;
        }
    }
    for (const QChar letter : letters) {
        const int held = holder[letter];
        if (held < 0 || visited[letter.unicode()]) {
            continue;
        }
        visited[letter.unicode()] = true;
        if (Place(held, wanted, holder, visited)) {
            holder[letter] = index;
            return true;
        }
    }
    return false;
}

} // namespace

QStringList Assign(const QStringList& labels) {
    std::map<QChar, int> holder; // letter -> label index; -1 for a label's own '&'
    for (const QString& label : labels) {
        if (const QChar mark = Of(label); !mark.isNull()) {
            holder[mark] = -1;
        }
    }
    std::vector<std::vector<QChar>> wanted(static_cast<std::size_t>(labels.size()));
    for (qsizetype i = 0; i < labels.size(); ++i) {
        if (Of(labels[i]).isNull()) {
            for (const qsizetype at : Candidates(labels[i])) {
                wanted[static_cast<std::size_t>(i)].push_back(labels[i][at].toLower());
            }
            std::vector<bool> visited(0x10000, false);
            Place(static_cast<int>(i), wanted, holder, visited);
        }
    }
    QStringList result = labels;
    for (const auto& [letter, index] : holder) {
        if (index < 0) {
            continue;
        }
        QString& label = result[index];
        for (const qsizetype at : Candidates(label)) {
            if (label[at].toLower() == letter) {
                label.insert(at, QLatin1Char('&'));
                break;
            }
        }
    }
    return result;
}

void ApplyToMenuTree(QMenuBar& bar) {
    ApplyToActions(bar.actions());
}

} // namespace mnemonics
