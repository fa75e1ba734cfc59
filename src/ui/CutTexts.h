#pragma once

#include <QString>

class QWidget;

namespace Sonmira {

// The text of a label, a button, a box or a field that has not room enough for it, else nothing.
QString ElidedTextOf(const QWidget& control);

// From now on the tool tip of such a control is its whole text while that is cut, unless it has one of its
// own. Other controls are left alone.
void ShowElidedTexts(QWidget& control);

}  // namespace Sonmira
