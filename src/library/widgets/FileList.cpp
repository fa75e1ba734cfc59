#include "library/widgets/FileList.h"

#include "library/widgets/ReportList.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace Sonmira {

namespace {

// The progress cell: the text, and behind a percentage a thin bar.
class ProgressCell : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const QVariant percent = index.data(FileListModel::PercentRole);
        if (!percent.isValid()) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        constexpr int TextWidth = 52;
        constexpr int BarHeight = 6;
        QStyleOptionViewItem textOption = option;
        textOption.displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
        textOption.rect.setWidth(TextWidth);
        QStyledItemDelegate::paint(painter, textOption, index);

        QRectF track = option.rect.adjusted(TextWidth + 6, 0, -8, 0);
        if (track.width() < BarHeight) return;
        track.setTop(option.rect.center().y() - BarHeight / 2.0);
        track.setHeight(BarHeight);
        QRectF done = track;
        done.setWidth(track.width() * qBound(0.0, percent.toDouble() / 100, 1.0));
        const QString icon = index.data(FileListModel::IconKeyRole).toString();
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(option.palette.color(QPalette::Midlight));
        painter->drawRoundedRect(track, BarHeight / 2.0, BarHeight / 2.0);
        painter->setBrush(icon == u"converted" ? QColor(0x2F, 0x9E, 0x63)
                                               : option.palette.color(QPalette::Link));
        if (done.width() >= 1) painter->drawRoundedRect(done, BarHeight / 2.0, BarHeight / 2.0);
        painter->restore();
    }
};

}  // namespace

FileList::FileList(QWidget* parent) : QTableView(parent) {
    setModel(&Model);
    setItemDelegateForColumn(FileListModel::ProgressColumn, new ProgressCell(this));
    MakeReportList(*this);
    setSelectionMode(QAbstractItemView::SingleSelection);
    QHeaderView* const header = horizontalHeader();
    header->setSectionResizeMode(FileListModel::FilenameColumn, QHeaderView::Stretch);
    header->resizeSection(FileListModel::TrackColumn, 1235 / 15);
    header->resizeSection(FileListModel::ProgressColumn, 3175 / 15);
}

void FileList::mousePressEvent(QMouseEvent* event) {
    Q_EMIT MouseDown(event->button() == Qt::RightButton ? 2 : 1);
    QTableView::mousePressEvent(event);
}

void FileList::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    if (indexAt(event->position().toPoint()).isValid()) Q_EMIT ItemClick(event->globalPosition().toPoint());
}

void FileList::ScrollToRow(int row) {
    // A row that was added just now is not in the scroll bar's range yet, and would stay one row out of view.
    updateGeometries();
    scrollTo(Model.index(row - 1, 0));
}

}  // namespace Sonmira
