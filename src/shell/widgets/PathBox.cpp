#include "shell/widgets/PathBox.h"

#include "platform/NativePath.h"

namespace Sonmira {

PathBox::PathBox(QWidget* parent) : QLineEdit(parent) {
    connect(this, &QLineEdit::textEdited, this,
            [this](const QString& shown) { Inner = PathFromShown(shown); });
}

void PathBox::SetText(const QString& path) {
    Inner = path;
    setText(ShownPath(path));
}

}  // namespace Sonmira
