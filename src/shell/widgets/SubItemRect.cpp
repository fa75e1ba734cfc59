#include "shell/widgets/SubItemRect.h"

#include <QAbstractItemView>

namespace Sonmira {

bool GetSubItemRect(QAbstractItemView* list, int item, int subItem, int code, QRect& rect) {
    rect.setTop(subItem);
    rect.setLeft(code);
    if (list == nullptr || list->model() == nullptr) return false;
    const QModelIndex cell = list->model()->index(item, subItem, list->rootIndex());
    if (!cell.isValid()) return false;
    rect = list->visualRect(cell);
    return true;
}

}  // namespace Sonmira
