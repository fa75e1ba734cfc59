#include "shell/widgets/ChoiceList.h"

#include "platform/Failure.h"

namespace Sonmira {

ChoiceList::ChoiceList(QWidget* parent) : QComboBox(parent) {
    connect(this, &QComboBox::activated, this, [this] { Q_EMIT Click(); });
}

void ChoiceList::SelectText(const QString& text) {
    const int index = findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index >= 0) SelectPlace(index);
}

void ChoiceList::SelectPlace(int place) {
    if (place < -1 || place >= count()) throw Failure(FailureNumber::InvalidPropertyValue);
    setCurrentIndex(place);
    Q_EMIT Click();
}

}  // namespace Sonmira
