#include "shell/widgets/LanguageMenu.h"

#include "platform/Failure.h"
#include "shell/LanguageFiles.h"

#include <QAction>
#include <QMenu>

namespace Sonmira {

using namespace Qt::StringLiterals;

LanguageMenu::LanguageMenu(QMenu& languer) : Languer(languer) {
    Append();
    LangueName.front()->setText(u"Option1"_s);
}

void LanguageMenu::Append() {
    const int index = static_cast<int>(LangueName.size());
    QAction* const item = Languer.addAction(QString());
    item->setObjectName(u"LangueName%1"_s.arg(index));
    item->setCheckable(true);
    connect(item, &QAction::triggered, this, [this, index] { Q_EMIT LangueNameClick(index); });
    LangueName.push_back(item);
}

void LanguageMenu::FillLanguageMenu() {
    std::size_t taken = 0;
    for (const LanguageFile& file : FindLanguageFiles()) {
        if (taken == LangueName.size()) Append();
        LangueName[taken]->setText(QString(file.Caption).replace(u'&', u"&&"_s));
        LangueName[taken]->setData(file.Path);
        ++taken;
    }
}

QAction* LanguageMenu::Item(int index) const {
    if (index < 0 || index > HighestIndex()) throw Failure(FailureNumber::SubscriptOutOfRange);
    return LangueName[static_cast<std::size_t>(index)];
}

QString LanguageMenu::PathOf(int index) const {
    return Item(index)->data().toString();
}

void LanguageMenu::UncheckAllBut(int index) const {
    for (int other = 0; other <= HighestIndex(); ++other) {
        if (other != index) Item(other)->setChecked(false);
    }
}

}  // namespace Sonmira
