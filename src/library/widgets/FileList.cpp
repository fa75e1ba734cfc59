#include "library/widgets/FileList.h"

#include "kit/Icons.h"
#include "kit/Palette.h"
#include "library/widgets/ReportList.h"
#include "platform/Values.h"

#include <QEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace Sonmira {

using namespace Qt::StringLiterals;

void FileListModel::Clear() {
    beginResetModel();
    Rows.clear();
    endResetModel();
}

int FileListModel::AddRow() {
    const int position = RowCount();
    beginInsertRows({}, position, position);
    Rows.emplace_back();
    endInsertRows();
    return position + 1;
}

const FileListModel::Row* FileListModel::At(int row) const {
    return row < 1 || row > RowCount() ? nullptr : &Rows[static_cast<std::size_t>(row - 1)];
}

FileListModel::Row* FileListModel::At(int row) {
    return const_cast<Row*>(std::as_const(*this).At(row));
}

void FileListModel::Changed(int row, int column) {
    const QModelIndex cell = index(row - 1, column);
    Q_EMIT dataChanged(cell, cell);
}

void FileListModel::SetText(int row, Column column, const QString& text) {
    Row* const changed = At(row);
    if (changed == nullptr) return;
    changed->Texts[column] = text;
    Changed(row, column);
}

QString FileListModel::Text(int row, Column column) const {
    const Row* const asked = At(row);
    return asked == nullptr ? QString() : asked->Texts[column];
}

void FileListModel::SetProgress(int row, const QString& text, std::optional<int> percent) {
    Row* const changed = At(row);
    if (changed == nullptr) return;
    changed->Percent = percent;
    SetText(row, ProgressColumn, text);
}

void FileListModel::SetIcon(int row, const QString& key) {
    Row* const changed = At(row);
    if (changed == nullptr) return;
    changed->IconKey = key;
    Changed(row, TrackColumn);
    Changed(row, ProgressColumn);
}

void FileListModel::SetHeader(Column column, const QString& text) {
    Headers[column] = text;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

int FileListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : RowCount();
}

int FileListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int{ColumnCount};
}

QVariant FileListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = Rows[static_cast<std::size_t>(index.row())];
    const QString& text = row.Texts[index.column()];
    switch (role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole:
            return text;
        case Qt::DecorationRole: {
            if (index.column() != TrackColumn || row.IconKey.isEmpty()) return {};
            auto icon = Icons.find(row.IconKey);
            if (icon == Icons.end()) icon = Icons.insert(row.IconKey, OwnIcon(u"row-"_s + row.IconKey));
            return icon.value();
        }
        case PercentRole:
            return row.Percent ? QVariant(*row.Percent) : QVariant();
        case IconKeyRole:
            return row.IconKey;
        default:
            return {};
    }
}

QVariant FileListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount) return {};
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return Headers[section];
    if (role == Qt::TextAlignmentRole) return int{Qt::AlignLeft | Qt::AlignVCenter};
    return {};
}

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
