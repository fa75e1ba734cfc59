#pragma once

#include "kit/Twips.h"

#include <QRect>

class QWidget;
class QAbstractItemView;

namespace Sonmira {

// Holds a window at that size (in twips) at least and at the size of the screen at most. The screen is looked
// at once: a later change of it is not seen.
void HookMinMaxInfo(QWidget& window, double minWidth, double minHeight);

// Lets the window take any size again.
void UnhookMinMaxInfo(QWidget& window);

// Asks a list for the rectangle of one cell, in the coordinates of its viewport. The question travels in
// the answer's own record: `subItem` is stored as its top and `code` as its left, and that is what stands
// there still when the list has no such cell. Returns whether it has.
bool GetSubItemRect(QAbstractItemView* list, int item, int subItem, int code, QRect& rect);

}  // namespace Sonmira
