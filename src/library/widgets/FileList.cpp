#include "library/widgets/FileList.h"

#include "kit/Palette.h"
#include "library/widgets/ReportList.h"

#include <QEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace Sonmira {

using namespace Qt::StringLiterals;

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
        const QString icon = index.data(FileListModel::IconKeyRole).toString();
        const bool isDone = icon == u"converted";
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        const Palette& colors = CurrentPalette();
        const bool mirrored = option.direction == Qt::RightToLeft;
        const int textWidth = option.fontMetrics.horizontalAdvance(u"100 %"_s) + 12;

        QStyleOptionViewItem textOption = option;
        textOption.displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
        textOption.rect.setWidth(textWidth);
        if (mirrored) textOption.rect.moveRight(option.rect.right());
        // The ground of the whole cell, then the text on it.
        option.widget->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
        QStyledItemDelegate::paint(painter, textOption, index);

        constexpr int BarHeight = 6;
        QRectF track(option.rect.left() + textWidth + 4, option.rect.center().y() - BarHeight / 2.0 + 0.5,
                     option.rect.width() - textWidth - 14, BarHeight);
        if (mirrored) track.moveLeft(option.rect.left() + 10);
        if (track.width() < BarHeight) return;
        QRectF done = track;
        done.setWidth(track.width() * qBound(0.0, percent.toInt() / 100.0, 1.0));
        if (mirrored) done.moveRight(track.right());
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(isSelected ? colors.TrackSelected : colors.Track);
        painter->drawRoundedRect(track, BarHeight / 2.0, BarHeight / 2.0);
        painter->setBrush(isDone ? colors.Ok : colors.Accent);
        if (done.width() >= 1) painter->drawRoundedRect(done, BarHeight / 2.0, BarHeight / 2.0);
        painter->restore();
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        // What went wrong is told in red, and what waits for its turn in grey.
        const Palette& colors = CurrentPalette();
        const QString icon = index.data(FileListModel::IconKeyRole).toString();
        if (icon == u"error") {
            option->palette.setColor(QPalette::Text, colors.DangerText);
            option->palette.setColor(QPalette::HighlightedText, colors.DangerText);
        } else if (icon == u"converted") {
            option->palette.setColor(QPalette::Text, colors.OkText);
            option->palette.setColor(QPalette::HighlightedText, colors.OkText);
        }
    }
};

}  // namespace

FileList::FileList(QWidget* parent) : QTableView(parent) {
    setModel(&Model);
    setItemDelegateForColumn(FileListModel::ProgressColumn, new ProgressCell(this));
    MakeReportList(*this);
    setSelectionMode(QAbstractItemView::SingleSelection);
    QHeaderView* const header = horizontalHeader();
    header->resizeSection(FileListModel::TrackColumn, 1235 / 15);
    header->resizeSection(FileListModel::ProgressColumn, 3175 / 15);
}

void FileList::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) FitRowsToFont(*this);
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
