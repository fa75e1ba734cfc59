#include "library/widgets/ConversionTree.h"

#include "library/CollectionView.h"
#include "platform/Failure.h"
#include "platform/NativePath.h"
#include "platform/widgets/FileIcons.h"
#include "shell/Paths.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

namespace Sonmira {

using namespace Qt::StringLiterals;

ConversionTree::ConversionTree(QWidget* parent) : QTreeWidget(parent) {
    setHeaderHidden(true);
    setUniformRowHeights(true);  // without it the cost of a row grows with the number of rows above it
    setAcceptDrops(true);
    setDragDropMode(QAbstractItemView::DropOnly);
}

void ConversionTree::ResetToRoot() {
    clear();
    Nodes.clear();
    auto* root = new QTreeWidgetItem(this, {u"My Conversion"_s});
    root->setIcon(0, OwnIcon(u"collection"));
    root->setExpanded(true);
    Nodes.insert(RootKey.toString(), root);
}

void ConversionTree::AddNode(const QString& parentKey, const QString& key, const QString& text,
                             const QString& imageKey) {
    if (Nodes.contains(key)) throw Failure(FailureNumber::KeyNotUnique);
    QTreeWidgetItem* const parent = NodeOf(parentKey);
    if (parent == nullptr) throw Failure(FailureNumber::KeyNotFound);
    const QIcon image = Images.At(imageKey);
    auto* node = new QTreeWidgetItem(parent, {ShownName(text)});
    node->setIcon(0, image);
    Nodes.insert(key, node);
}

void ConversionTree::GetIcon(const QString& path) {
    const QString key = ExtensionOf(path);
    if (!Images.Contains(key)) Images.Add(key, OwnIcon(u"audio-file"));
}

void ConversionTree::GetIcon4(const QString& path) {
    const QString folderKey = FolderImage.toString();
    if (Images.Contains(folderKey)) return;
    if (path.size() < 4) {
        Images.Add(DriveImage.toString(), OwnIcon(u"drive"));
    } else {
        Images.Add(folderKey, OwnIcon(u"folder"));
    }
}

void ConversionTree::dragEnterEvent(QDragEnterEvent* event) {
    dragMoveEvent(event);
}

void ConversionTree::dragMoveEvent(QDragMoveEvent* event) {
    if (!event->mimeData()->hasUrls()) return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void ConversionTree::dropEvent(QDropEvent* event) {
    QStringList paths;
    for (const QUrl& url : event->mimeData()->urls()) {
        const QString path = PathFromUrl(url);
        if (!path.isEmpty()) paths.append(path);
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // The program that the files come from waits until this event ends, so the work starts after it.
    QTimer::singleShot(0, this, [this, paths] { Q_EMIT FilesDropped(paths); });
}

}  // namespace Sonmira
