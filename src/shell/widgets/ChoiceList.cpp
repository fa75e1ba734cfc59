#include "shell/widgets/ChoiceList.h"

namespace Sonmira {

ChoiceList::ChoiceList(QWidget* parent) : QComboBox(parent) {
    connect(this, &QComboBox::activated, this, [this] { Q_EMIT Click(); });
}

void ChoiceList::SelectText(const QString& text) {
    const int index = findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index < 0) return;
    setCurrentIndex(index);
    Q_EMIT Click();
}

}  // namespace Sonmira
