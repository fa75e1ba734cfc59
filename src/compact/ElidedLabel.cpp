#include "compact/ElidedLabel.h"

#include <QPainter>

namespace Sonmira {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    const QRect room = contentsRect();
    const QString fitting = fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width());
    setToolTip(fitting == text() ? QString() : text());
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeading, fitting);
}

}  // namespace Sonmira
