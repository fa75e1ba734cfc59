#include "shell/widgets/WindowMeasures.h"

#include <QAbstractItemView>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace Sonmira {

void HookMinMaxInfo(QWidget& window, double minWidth, double minHeight) {
    const QSize least(qRound(minWidth / TwipsPerPixel), qRound(minHeight / TwipsPerPixel));
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const QSize most = screen != nullptr ? screen->size() : least;
    // On a screen smaller than the least size the least size holds.
    window.setMaximumSize(most.expandedTo(least));
    window.setMinimumSize(least);
}

void UnhookMinMaxInfo(QWidget& window) {
    window.setMinimumSize(0, 0);
    window.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
}

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
