#include "ui/Mnemonics.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <set>

namespace Sonmira {

namespace {

// A place of a letter that is free; those at the start of a word first. -1 where there is none.
qsizetype FreePlace(const QString& text, const std::set<QChar>& taken) {
    qsizetype any = -1;
    for (qsizetype n = 0; n < text.size(); ++n) {
        if (!text[n].isLetter() || taken.contains(text[n].toLower())) continue;
        const bool startsWord = n == 0 || text[n - 1].isSpace();
        if (startsWord) return n;
        if (any < 0) any = n;
    }
    return any;
}

void Give(const QList<QAction*>& actions) {
    QList<QAction*> named;
    QStringList texts;
    for (QAction* action : actions) {
        if (action->isSeparator()) continue;
        named.append(action);
        texts.append(action->text());
    }
    const QStringList given = WithMnemonics(texts);
    for (qsizetype n = 0; n < named.size(); ++n) named[n]->setText(given[n]);
}

}  // namespace

QStringList WithMnemonics(const QStringList& texts) {
    std::set<QChar> taken;
    for (const QString& text : texts) {
        const qsizetype mark = text.indexOf(u'&');
        if (mark >= 0 && mark + 1 < text.size()) taken.insert(text[mark + 1].toLower());
    }
    QStringList given;
    for (QString text : texts) {
        const qsizetype place = text.contains(u'&') ? -1 : FreePlace(text, taken);
        if (place >= 0) {
            taken.insert(text[place].toLower());
            text.insert(place, u'&');
        }
        given.append(text);
    }
    return given;
}

void GiveMnemonics(QMenuBar& bar) {
    Give(bar.actions());
    for (const QAction* action : bar.actions()) {
        if (action->menu() != nullptr) GiveMnemonics(*action->menu());
    }
}

void GiveMnemonics(QMenu& menu) {
    Give(menu.actions());
}

}  // namespace Sonmira
