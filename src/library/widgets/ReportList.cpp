#include "library/widgets/ReportList.h"

#include "kit/Icons.h"

#include <QHeaderView>
#include <QPainter>
#include <QTableView>

namespace Sonmira {

void MakeReportList(QTableView& list) {
    list.setSelectionBehavior(QAbstractItemView::SelectRows);
    list.setShowGrid(false);
    list.setWordWrap(false);
    list.setTextElideMode(Qt::ElideRight);
    list.verticalHeader()->hide();
    list.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    list.verticalHeader()->setMinimumSectionSize(1);
    list.verticalHeader()->setDefaultSectionSize(22);
    list.horizontalHeader()->setHighlightSections(false);
}

void PaintEmptyHint(QWidget& viewport, const QString& hint) {
    if (hint.isEmpty()) return;
    constexpr int Margin = 16;
    constexpr int Edge = 48;
    QPainter painter(&viewport);
    const QRect room = viewport.rect().adjusted(Margin, Margin, -Margin, -Margin);
    const QRect text = painter.boundingRect(room, Qt::AlignHCenter | Qt::TextWordWrap, hint);
    const int height = Edge + Margin + text.height();
    if (height > room.height() - 2 * Edge) return;
    const int top = room.top() + (room.height() - height) / 2;
    painter.setOpacity(0.75);
    OwnIcon(u"add-directory").paint(&painter, room.center().x() - Edge / 2, top, Edge, Edge);
    painter.setOpacity(1);
    painter.setPen(viewport.palette().color(QPalette::PlaceholderText));
    painter.drawText(QRect(room.left(), top + Edge + Margin, room.width(), text.height()),
                     Qt::AlignHCenter | Qt::TextWordWrap, hint);
}

}  // namespace Sonmira
