#include "kit/IconBox.h"

#include <QPainter>

namespace Sonmira {

IconBox::IconBox(QWidget* parent, const QIcon& icon, int size) : QLabel(parent), Icon(icon), Edge(size) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void IconBox::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QRect room(0, 0, Edge, Edge);
    room.moveCenter(rect().center());
    Icon.paint(&painter, room, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
}

}  // namespace Sonmira
