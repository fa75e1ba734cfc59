#pragma once

#include <QString>
#include <QStringList>

class QMenu;
class QMenuBar;

namespace Sonmira {

struct BatchConverterForm;

// Loads a language file and gives every control of the main window its text from it, in a fixed order in
// which some texts are written twice and the later one stands.
void ApplyLanguage(const QString& path, BatchConverterForm& form);

// Underlines a letter in each text, by "&" before it, so that all differ: the first letter of a word where
// there is a free one, else any. A text that has its own, or none left, stays as it is.
QStringList WithMnemonics(const QStringList& texts);

// The same for the titles of a menu bar and for the entries of each of its menus.
void GiveMnemonics(QMenuBar& bar);
void GiveMnemonics(QMenu& menu);

}  // namespace Sonmira
