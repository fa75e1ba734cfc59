#pragma once

#include "library/widgets/ImageList.h"

#include <QStringList>
#include <QTreeWidget>

namespace Sonmira {

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

Q_SIGNALS:
    // Inner paths, in the order of the drop.
    void FilesDropped(const QStringList& paths);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QHash<QString, QTreeWidgetItem*> Nodes;
    ImageList Images;
};

}  // namespace Sonmira
