#include "library/widgets/ReportList.h"

#include "kit/Icons.h"
#include "platform/Failure.h"

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
    list.setIconSize(QSize(16, 16));
    FitRowsToFont(list);
    list.horizontalHeader()->setHighlightSections(false);
}

void FitRowsToFont(QTableView& list) {
    constexpr int LeastHeight = 22;
    constexpr int Air = 7;
    list.verticalHeader()->setDefaultSectionSize(qMax(LeastHeight, list.fontMetrics().height() + Air));
}

void PaintEmptyHint(QWidget& viewport, const QString& hint) {
    constexpr int Margin = 16;
    constexpr int Edge = 48;
    if (hint.isEmpty()) return;
    QPainter painter(&viewport);
    const QRect room = viewport.rect().adjusted(Margin, Margin, -Margin, -Margin);
    const QRect text = painter.boundingRect(room, Qt::AlignHCenter | Qt::TextWordWrap, hint);
    const bool hasRoom = room.height() > 3 * Edge + text.height();
    const int height = text.height() + (hasRoom ? Edge + Margin : 0);
    int top = room.top() + (room.height() - height) / 2;
    if (hasRoom) {
        painter.setOpacity(0.75);
        OwnIcon(u"add-directory").paint(&painter, room.center().x() - Edge / 2, top, Edge, Edge);
        painter.setOpacity(1);
        top += Edge + Margin;
    }
    painter.setPen(viewport.palette().color(QPalette::PlaceholderText));
    painter.drawText(QRect(room.left(), top, room.width(), text.height()),
                     Qt::AlignHCenter | Qt::TextWordWrap, hint);
}

void ImageList::Add(const QString& key, const QIcon& image) {
    if (Images.contains(key)) throw Failure(FailureNumber::KeyNotUnique);
    Images.insert(key, image);
}

QIcon ImageList::At(const QString& key) const {
    const auto found = Images.constFind(key);
    if (found == Images.constEnd()) throw Failure(FailureNumber::KeyNotFound);
    return found.value();
}

}  // namespace Sonmira
