#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <QTableView>

#include <optional>
#include <vector>

namespace Sonmira {

// The rows of a run: number, name, progress, with an icon in front. Rows count from 1 in every call but
// those of the base class.
class FileListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { TrackColumn, FilenameColumn, ProgressColumn, ColumnCount };
    enum Role { PercentRole = Qt::UserRole, IconKeyRole };

    using QAbstractTableModel::QAbstractTableModel;

    void Clear();
    int AddRow();
    int RowCount() const { return static_cast<int>(Rows.size()); }
    // The user may clear the rows before a run has accepted its first file. What is written then to a row
    // that has gone is dropped, and its text is empty.
    void SetText(int row, Column column, const QString& text);
    QString Text(int row, Column column) const;
    // The text of the progress, and the percentage of its bar, which has none without.
    void SetProgress(int row, const QString& text, std::optional<int> percent);
    void SetIcon(int row, const QString& key);
    void SetHeader(Column column, const QString& text);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row {
        QString Texts[ColumnCount];
        std::optional<int> Percent;
        QString IconKey;
    };
    // Null for a row that is not there.
    const Row* At(int row) const;
    Row* At(int row);
    void Changed(int row, int column);

    std::vector<Row> Rows;
    QString Headers[ColumnCount];
    mutable QHash<QString, QIcon> Icons;
};

// The log of a run: one row a file, in the order in which they were started. A table and not a tree view,
// because only a table adds its thousandth row as fast as its first.
class FileList : public QTableView {
    Q_OBJECT

public:
    explicit FileList(QWidget* parent = nullptr);

    FileListModel& Rows() { return Model; }
    // Brings the row (counted from 1) into view.
    void ScrollToRow(int row);

Q_SIGNALS:
    // A mouse button went down anywhere in the list: 1 is the left one, 2 the right one.
    void MouseDown(int button);
    // Either button was clicked on a row. `position` is on the screen.
    void ItemClick(const QPoint& position);

protected:
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    FileListModel Model;
};

}  // namespace Sonmira
