#include "compact/AudiotoolList.h"

#include "library/widgets/ReportList.h"
#include "platform/widgets/DesktopSignals.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QStyledItemDelegate>

namespace Sonmira {

namespace {

// A name keeps its colour in a selected row, too, and the row needs no frame around it to show that keys go
// there.
class NameCell : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->palette.setColor(QPalette::HighlightedText, option->palette.color(QPalette::Text));
        if (option->state.testFlag(QStyle::State_Selected)) option->state &= ~QStyle::State_HasFocus;
    }
};

constexpr int LeastWidth = 120;  // of the names and of the bars

}  // namespace

AudiotoolList::AudiotoolList(QWidget* parent) : QTableView(parent) {
    setModel(&Model);
    setItemDelegateForColumn(AudiotoolRows::NameColumn, new NameCell(this));
    MakeReportList(*this);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setTabKeyNavigation(false);
    setAcceptDrops(true);
    setDragDropMode(QAbstractItemView::DropOnly);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    QHeaderView* const header = horizontalHeader();
    header->setMinimumSectionSize(40);
    header->setStretchLastSection(true);
    header->resizeSection(AudiotoolRows::PositionColumn, 82);
    header->resizeSection(AudiotoolRows::DurationColumn, 84);
    setMinimumSize(440, 24 + 5 * 22);
    connect(header, &QHeaderView::sectionResized, this, &AudiotoolList::NoteWidths);
}

void AudiotoolList::ScrollToRow(int row) {
    // A row that was added just now is not in the scroll bar's range yet, and would stay one row out of view.
    updateGeometries();
    scrollTo(Model.index(row - 1, 0));
}

QList<QPersistentModelIndex> AudiotoolList::SelectedRows() const {
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end(),
              [](const QModelIndex& a, const QModelIndex& b) { return a.row() > b.row(); });
    return {rows.begin(), rows.end()};
}

int AudiotoolList::SelectedRow() const {
    const QModelIndex current = currentIndex();
    return current.isValid() && selectionModel()->isRowSelected(current.row()) ? current.row() + 1 : 0;
}

void AudiotoolList::SetEmptyHint(const QString& hint) {
    EmptyHint = hint;
    viewport()->update();
}

void AudiotoolList::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange) return;
    FitRowsToFont(*this);
    // At once, so that what lies over the rows is in place when they are painted.
    updateGeometries();
}

void AudiotoolList::dragEnterEvent(QDragEnterEvent* event) {
    AcceptFiles(*event);
}

void AudiotoolList::dragMoveEvent(QDragMoveEvent* event) {
    AcceptFiles(*event);
}

void AudiotoolList::dropEvent(QDropEvent* event) {
    const QStringList paths = DroppedPaths(*event);
    Q_EMIT FilesDropped(paths);
}

void AudiotoolList::keyPressEvent(QKeyEvent* event) {
    QTableView::keyPressEvent(event);
    Q_EMIT KeyHandled(event->key());
    if (event->key() == Qt::Key_Delete) Q_EMIT DeletePressed();
}

void AudiotoolList::contextMenuEvent(QContextMenuEvent* event) {
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex row = isByKey ? currentIndex() : indexAt(viewport()->mapFromGlobal(event->globalPos()));
    if (!row.isValid()) return;
    if (!selectionModel()->isRowSelected(row.row())) {
        selectionModel()->setCurrentIndex(row,
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    Q_EMIT RowMenuAsked(isByKey ? viewport()->mapToGlobal(visualRect(row).center()) : event->globalPos());
}

void AudiotoolList::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (Model.Count() == 0) PaintEmptyHint(*viewport(), EmptyHint);
}

// The names have what room the other columns leave; the bars keep the width that they have, or that the user
// left them.
void AudiotoolList::FitNames() {
    QHeaderView* const header = horizontalHeader();
    const int rest = header->sectionSize(AudiotoolRows::PositionColumn) +
                     header->sectionSize(AudiotoolRows::DurationColumn) + ProgressWidth;
    FittingNames = true;
    header->resizeSection(AudiotoolRows::NameColumn, std::max(LeastWidth, viewport()->width() - rest));
    FittingNames = false;
}

void AudiotoolList::NoteWidths(int column) {
    if (FittingNames || !isVisible() || column == AudiotoolRows::ProgressColumn) return;
    QHeaderView* const header = horizontalHeader();
    int left = viewport()->width();
    for (int other = 0; other < AudiotoolRows::ProgressColumn; ++other) left -= header->sectionSize(other);
    IsWiderThanRoom = left < LeastWidth;
    ProgressWidth = std::max(LeastWidth, left);
}

void AudiotoolList::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    // A scroll bar that comes below takes height only, and where the user asked for more than the room has,
    // the width is his.
    if (event->oldSize().width() != event->size().width() && !IsWiderThanRoom) FitNames();
}

void AudiotoolList::updateGeometries() {
    QTableView::updateGeometries();
    Q_EMIT GeometriesUpdated();
}

// Home and End go to the first and the last row, as in every list.
QModelIndex AudiotoolList::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (action == MoveHome) return Model.index(0, std::max(0, currentIndex().column()));
    if (action == MoveEnd) return Model.index(Model.Count() - 1, std::max(0, currentIndex().column()));
    return QTableView::moveCursor(action, modifiers);
}

}  // namespace Sonmira
