#pragma once

#include "library/widgets/FileListModel.h"

#include <QTableView>

namespace Sonmira {

// The log of a run: one row a file, in the order in which they were started. A table and not a tree view,
// because only a table adds its thousandth row as fast as its first.
class FileList : public QTableView {
    Q_OBJECT

public:
    explicit FileList(QWidget* parent = nullptr);

    FileListModel& Rows() { return Model; }
    // Brings the row (counted from 1) into view.
    void ScrollToRow(int row);

private:
    FileListModel Model;
};

}  // namespace Sonmira
