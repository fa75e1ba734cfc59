#include "library/widgets/ReportList.h"

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
    list.verticalHeader()->setDefaultSectionSize(22);
    list.horizontalHeader()->setHighlightSections(false);
}

void PaintEmptyHint(QWidget& viewport, const QString& hint) {
    constexpr int Margin = 16;
    QPainter painter(&viewport);
    painter.setPen(viewport.palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport.rect().adjusted(Margin, Margin, -Margin, -Margin),
                     Qt::AlignCenter | Qt::TextWordWrap, hint);
}

}  // namespace Sonmira
