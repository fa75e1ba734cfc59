#pragma once

#include "compact/AudiotoolRows.h"

#include <QStringList>
#include <QTableView>

namespace Sonmira {

// The list of the compact window. Files may be dropped on it from other programs; several rows may be
// selected; Ctrl with A selects all.
class AudiotoolList : public QTableView {
    Q_OBJECT

public:
    explicit AudiotoolList(QWidget* parent = nullptr);

    AudiotoolRows& Rows() { return Model; }
    // Brings the row (counted from 1) into view.
    void ScrollToRow(int row);
    // The selected rows from the last to the first, as what stays theirs while others go.
    QList<QPersistentModelIndex> SelectedRows() const;
    // The row that was selected last, counted from 1; 0 for none.
    int SelectedRow() const;

    // Draws a hint over the list while it is empty.
    void SetEmptyHint(const QString& hint);

Q_SIGNALS:
    // Inner paths, in the order of the drop. The program that the files come from waits until the handler
    // ends.
    void FilesDropped(const QStringList& paths);
    // The list has done what this key does.
    void KeyHandled(int key);
    // Columns that share the room of the list have got their widths, which comes after the signal of a
    // column.
    void GeometriesUpdated();
    void DeletePressed();
    // The context menu of a row is asked for; `position` is on the screen.
    void RowMenuAsked(const QPoint& position);

protected:
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void updateGeometries() override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    void FitNames();
    // The user has resized a column.
    void NoteWidths(int column);

    AudiotoolRows Model;
    QString EmptyHint;
    int ProgressWidth = 240;
    bool FittingNames = false;
    bool IsWiderThanRoom = false;  // by the user's hand
};

}  // namespace Sonmira
