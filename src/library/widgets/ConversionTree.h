#pragma once

#include "library/widgets/ReportList.h"

#include <QStringList>
#include <QTreeWidget>

namespace Sonmira {

// A node as somebody remembers it. It never dangles: after the node is gone it names none, even where a later
// node has the same key.
struct NodeReference {
    QString Key;
    quint64 Number = 0;  // 0: no node was ever remembered

    bool IsEmpty() const { return Number == 0; }
};

// The tree control of the collection. Every node has a key, unique across the tree: the full path, or the
// root's own. Files and folders may be dropped on it from other programs.
class ConversionTree : public QTreeWidget {
    Q_OBJECT

public:
    explicit ConversionTree(QWidget* parent = nullptr);

    // Removes all nodes and makes the root, expanded.
    void ResetToRoot();

    // Adds a node behind the other children of its parent. Fails with KeyNotUnique or KeyNotFound (of the
    // parent or of the image) and then adds nothing.
    void AddNode(const QString& parentKey, const QString& key, const QString& text, const QString& imageKey);

    // See to it that the image of a file's type, or of a folder or drive, is there.
    void GetIcon(const QString& path);
    void GetIcon4(const QString& path);

    // The node of that key, or null.
    QTreeWidgetItem* NodeOf(const QString& key) const { return Nodes.value(key); }
    int NodeCount() const { return static_cast<int>(Nodes.size()); }

    // What a node is remembered by, and the node that is meant. A node that is gone fails with ObjectNotSet.
    static NodeReference ReferenceTo(const QTreeWidgetItem* node);
    QTreeWidgetItem* NodeBehind(const NodeReference& reference) const;
    // Removes a node with everything below it.
    void RemoveNode(const NodeReference& reference);

    // Draws a hint over the tree while it holds nothing but the root.
    void SetEmptyHint(const QString& hint);

Q_SIGNALS:
    // Inner paths, in the order of the drop.
    void FilesDropped(const QStringList& paths);
    // A mouse button went down anywhere in the tree: 1 is the left one, 2 the right one.
    void MouseDown(int button);
    // Either button was clicked on a node; the keyboard never does this. `position` is on the screen.
    void NodeClick(QTreeWidgetItem* node, const QPoint& position);
    // The Delete key was pressed while a node was selected.
    void DeletePressed();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                 const QModelIndex& index) const override;
    bool viewportEvent(QEvent* event) override;

private:
    static QString KeyOf(const QTreeWidgetItem* node);
    void Remember(const QString& key, QTreeWidgetItem* node);
    void ForgetBelow(const QTreeWidgetItem* node);
    void ShowDropPlace(bool shown);
    // The node whose text or image lies there; not its arrow or the room beside it.
    QTreeWidgetItem* NodeAt(const QPoint& position) const;

    QHash<QString, QTreeWidgetItem*> Nodes;
    ImageList Images;
    QString EmptyHint;
    quint64 LastNumber = 0;
    bool IsDropPlace = false;  // something that can be dropped is held over the tree
    NodeReference Pressed;     // where the mouse button went down
};

}  // namespace Sonmira
