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
