#include "compact/AudiotoolRows.h"

#include "engine/RunView.h"
#include "kit/Icons.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "platform/Values.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

const AudiotoolRows::Row& AudiotoolRows::At(int row) const {
    if (row < 1 || row > Count()) throw Failure(FailureNumber::SubscriptOutOfRange);
    return Rows[static_cast<std::size_t>(row - 1)];
}

void AudiotoolRows::Append(const QString& path, const QString& duration, QColor colour) {
    beginInsertRows({}, Count(), Count());
    Rows.push_back({path, duration, colour, {}});
    Paths.insert(path);
    endInsertRows();
}

void AudiotoolRows::Remove(int row) {
    const QString path = At(row).Path;
    beginRemoveRows({}, row - 1, row - 1);
    Rows.erase(Rows.begin() + (row - 1));
    Paths.remove(path);
    endRemoveRows();
}

void AudiotoolRows::Clear() {
    beginResetModel();
    Rows.clear();
    Paths.clear();
    endResetModel();
}

void AudiotoolRows::RenumberRows() {
    if (Count() == 0) return;
    Q_EMIT dataChanged(index(0, PositionColumn), index(Count() - 1, PositionColumn));
}

void AudiotoolRows::SetState(int row, const RowState& state) {
    if (At(row).Shown == state) return;
    Row& changed = Rows[static_cast<std::size_t>(row - 1)];
    const bool hasOtherIcon = changed.Shown.Icon != state.Icon;
    changed.Shown = state;
    if (hasOtherIcon) Q_EMIT dataChanged(index(row - 1, PositionColumn), index(row - 1, PositionColumn));
    Q_EMIT StateChanged(row);
}

void AudiotoolRows::ResetStates() {
    for (int row = 1; row <= Count(); ++row) SetState(row, {});
}

int AudiotoolRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Count();
}

int AudiotoolRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int{ColumnCount};
}

QVariant AudiotoolRows::TextOf(const Row& row, int position, int column) const {
    switch (column) {
        case PositionColumn:
            return RowNumberText(position);
        case NameColumn:
            return ShownName(FileNameOf(row.Path));
        case DurationColumn:
            return row.Duration;
        default:
            return {};  // the bar stands over it
    }
}

QVariant AudiotoolRows::IconOf(const Row& row) const {
    const QString name = row.Shown.Icon.isEmpty() ? u"waiting"_s : row.Shown.Icon;
    auto icon = Icons.find(name);
    if (icon == Icons.end()) icon = Icons.insert(name, OwnIcon(u"row-"_s + name));
    return icon.value();
}

QVariant AudiotoolRows::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = Rows[static_cast<std::size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
            return TextOf(row, index.row() + 1, index.column());
        case Qt::ToolTipRole:
            return index.column() == NameColumn ? ShownPath(row.Path) : row.Shown.Progress;
        case Qt::AccessibleTextRole:
            // Nothing stands in the cell itself, but who is read the table hears how far the file is.
            return index.column() == ProgressColumn ? row.Shown.Progress
                                                    : TextOf(row, index.row() + 1, index.column());
        case Qt::ForegroundRole:
            return index.column() == NameColumn ? QVariant(row.Colour) : QVariant();
        case Qt::DecorationRole:
            return index.column() == PositionColumn ? IconOf(row) : QVariant();
        default:
            return {};
    }
}

QVariant AudiotoolRows::headerData(int section, Qt::Orientation orientation, int role) const {
    static const QString headers[] = {u"Track"_s, u"Filename"_s, u"Duration"_s, u"Progress"_s};
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount) return {};
    if (role == Qt::DisplayRole) return headers[section];
    if (role == Qt::TextAlignmentRole) return int{Qt::AlignLeft | Qt::AlignVCenter};
    return {};
}

}  // namespace Sonmira
