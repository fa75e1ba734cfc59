#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QIcon>
#include <QSet>

#include <vector>

namespace Sonmira {

// What a row shows of its conversion.
struct RowState {
    QString Icon;      // empty before the first conversion; else "conversion", "converted" or "error"
    QString Progress;  // a percentage, or why the file failed
    int Percent = 0;   // of the bar

    bool operator==(const RowState&) const = default;
};

// The rows of the compact window: one a file, and no file twice. Rows count from 1 in every call but those of
// the base class; each call fails with SubscriptOutOfRange for a row that is not there.
class AudiotoolRows : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { PositionColumn, NameColumn, DurationColumn, ProgressColumn, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    int Count() const { return static_cast<int>(Rows.size()); }
    bool Holds(const QString& path) const { return Paths.contains(path); }
    const QString& Path(int row) const { return At(row).Path; }
    const QString& Duration(int row) const { return At(row).Duration; }

    // Adds a row behind the last one. The name stands in `colour` for as long as the row does.
    void Append(const QString& path, const QString& duration, QColor colour);
    void Remove(int row);
    void Clear();
    // The position of a row is its text in the first column. After a removal all are written anew.
    void RenumberRows();

    const RowState& State(int row) const { return At(row).Shown; }
    void SetState(int row, const RowState& state);
    // All rows as before their first conversion.
    void ResetStates();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    void StateChanged(int row);

private:
    struct Row {
        QString Path;
        QString Duration;
        QColor Colour;
        RowState Shown;
    };
    const Row& At(int row) const;
    QVariant TextOf(const Row& row, int position, int column) const;
    QVariant IconOf(const Row& row) const;

    std::vector<Row> Rows;
    QSet<QString> Paths;
    mutable QHash<QString, QIcon> Icons;
};

}  // namespace Sonmira
