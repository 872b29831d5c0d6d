#pragma once

#include <QString>
#include <QStringList>

class QMenuBar;
class QWidget;

// Keyboard mnemonics ("&File", "Save &As...") for menus. A label that already
// has one keeps it; every other label gets the first free letter that starts
// one of its words, else the first free letter or digit in it. The words of a
// label never change, only the '&' is added.
namespace mnemonics {

// The labels of one menu with mnemonics; a label for which no letter is free
// stays as it is.
QStringList Assign(const QStringList& labels);
// The mnemonic character of a label in lower case, or a null QChar.
QChar Of(const QString& label);
// Gives the menu bar and every menu below it their mnemonics.
void ApplyToMenuTree(QMenuBar& bar);

} // namespace mnemonics
