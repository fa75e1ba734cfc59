#pragma once

#include <QRect>

class QAbstractItemView;

namespace Sonmira {

// Asks a list for the rectangle of one cell, in the coordinates of its viewport. The question travels in
// the answer's own record: `subItem` is stored as its top and `code` as its left, and that is what stands
// there still when the list has no such cell. Returns whether it has.
bool GetSubItemRect(QAbstractItemView* list, int item, int subItem, int code, QRect& rect);

}  // namespace Sonmira
