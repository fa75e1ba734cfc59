#pragma once

#include <QString>
#include <QStringList>

class QMenu;
class QMenuBar;

namespace Sonmira {

// Underlines a letter in each text, by "&" before it, so that all differ: the first letter of a word where
// there is a free one, else any. A text that has its own, or none left, stays as it is.
QStringList WithMnemonics(const QStringList& texts);

// The same for the titles of a menu bar and for the entries of each of its menus.
void GiveMnemonics(QMenuBar& bar);
void GiveMnemonics(QMenu& menu);

}  // namespace Sonmira
