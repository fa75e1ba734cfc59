#include "shell/widgets/PathBox.h"

#include "platform/NativePath.h"

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

}  // namespace Sonmira
