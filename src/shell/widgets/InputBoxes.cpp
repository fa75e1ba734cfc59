#include "shell/widgets/InputBoxes.h"

#include "platform/Failure.h"
#include "platform/Paths.h"

namespace Sonmira {

PathBox::PathBox(QWidget* parent) : QLineEdit(parent) {
    connect(this, &QLineEdit::textEdited, this,
            [this](const QString& shown) { Inner = PathFromShown(shown); });
}

void PathBox::SetText(const QString& path) {
    Inner = path;
    // The program may set the text while the user types in it; the cursor stays where it was.
    const int cursor = cursorPosition();
    setText(ShownPath(path));
    if (hasFocus()) setCursorPosition(cursor);
}

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
