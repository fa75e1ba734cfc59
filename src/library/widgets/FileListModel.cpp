#include "library/widgets/FileListModel.h"

#include "kit/Icons.h"
#include "platform/Values.h"

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

}  // namespace Sonmira
