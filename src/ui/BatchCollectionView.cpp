#include "ui/BatchCollectionView.h"

#include "engine/InputCheck.h"
#include "library/Removal.h"
#include "library/widgets/ConversionTree.h"
#include "library/widgets/FileList.h"
#include "platform/EventLoop.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "platform/Values.h"
#include "shell/Settings.h"
#include "shell/widgets/Events.h"
#include "ui/BatchConverter.h"
#include "ui/BatchConverterForm.h"

#include <QAction>
#include <QLabel>
#include <QMenu>

namespace Sonmira {

void BatchCollectionView::GetIcon(const QString& path) {
    Form.TreeView1->GetIcon(path);
}

void BatchCollectionView::GetIcon4(const QString& path) {
    Form.TreeView1->GetIcon4(path);
}

void BatchCollectionView::AddNode(const QString& parentKey, const QString& key, const QString& text,
                                  const QString& imageKey) {
    Form.TreeView1->AddNode(parentKey, key, text, imageKey);
}

void BatchCollectionView::ShowPath(const QString& path) {
    Form.StatusPanel1->setText(ShownPath(path));
}

void BatchCollectionView::ShowDirectoryCount(int count) {
    Form.LabelDirCount->setText(PlainNumber(count));
}

void BatchCollectionView::ShowFileCount(int count) {
    Form.Label4->setText(PlainNumber(count));
}

void BatchCollectionView::SetControlsEnabled(bool enabled) {
    LockInputs(enabled);
}

void BatchCollectionView::Yield() {
    YieldToEventLoop();
}

// What clicks and keys on the tree and on the list of rows do in the main window.

namespace {

constexpr int RightButton = 2;

}  // namespace

void BatchConverter::ConnectCollectionEvents() {
    ConversionTree* const tree = Controls.TreeView1;
    OnEvent(tree, &ConversionTree::FilesDropped, this, [this](const QStringList& paths) { AddDrop(paths); });
    OnEvent(tree, &ConversionTree::MouseDown, this, [this](int button) { LastMouseButton = button; });
    OnEvent(tree, &ConversionTree::NodeClick, this,
            [this](QTreeWidgetItem* node, const QPoint& position) { TreeView1_NodeClick(node, position); });
    OnEvent(tree, &ConversionTree::DeletePressed, this, [this] { removefromlist_Click(); });
    OnEvent(Controls.removefromlist, &QAction::triggered, this, [this] { removefromlist_Click(); });
    OnEvent(Controls.OpenDirectory, &QAction::triggered, this, [this] { OpenDirectory_Click(); });
    FileList* const rows = Controls.ListViewFiles;
    OnEvent(rows, &FileList::MouseDown, this, [this](int button) { LastMouseButton = button; });
    OnEvent(rows, &FileList::ItemClick, this,
            [this](const QPoint& position) { ListViewFiles_ItemClick(position); });
}

void BatchConverter::TreeView1_NodeClick(QTreeWidgetItem* node, const QPoint& position) {
    SelectedNode = ConversionTree::ReferenceTo(node);
    TagPage.HideMemory();
    if (ThisRun.Busy()) return;
    Controls.LabelFileName->clear();
    Controls.LabelDuration->clear();
    // Looks at files as well as folders, so that what follows for a file is for one that has gone.
    const bool isThere = DirectoryExists(SelectedNode.Key);
    if (LastMouseButton != RightButton) {
        if (Controls.ShowsTagPage()) {
            TagPage.LoadTagPanel(SelectedNode.Key);
        } else if (!isThere) {
            ShowFileInformation(node->text(0), SelectedNode.Key);
        }
        return;
    }
    if (Items.ScanRunning) return;
    if (!isThere) ShowFileInformation(node->text(0), SelectedNode.Key);
    Controls.OpenDirectory->setVisible(isThere);
    if (SelectedNode.Key != RootKey) Controls.popupmenux->popup(position);
}

QString BatchConverter::SelectedKey() const {
    const bool isThere = PassOver([this] { Controls.TreeView1->NodeBehind(SelectedNode); });
    return isThere ? SelectedNode.Key : QString();
}

void BatchConverter::ShowFileInformation(const QString& name, const QString& key) {
    Controls.LabelFileName->setText(name);
    Controls.LabelDuration->setText(ReadFileInformation(Codecs.Parts(), key));
}

void BatchConverter::removefromlist_Click() {
    PassOver([this] {
        // A scan that yields knows its folders by their positions; nothing may move under it.
        if (Items.ScanRunning || SelectedNode.IsEmpty() || SelectedNode.Key == RootKey) return;
        Controls.TreeView1->RemoveNode(SelectedNode);
        RemoveFromCollection(Items, CollectionShown, SelectedNode.Key);
        Controls.LabelFileName->clear();
        Controls.LabelDuration->clear();
    });
}

void BatchConverter::OpenDirectory_Click() {
    const QString key = SelectedKey();
    if (!key.isEmpty()) ShellOpen(key, key);
}

void BatchConverter::ListViewFiles_ItemClick(const QPoint& position) {
    if (LastMouseButton == RightButton && ThisRun.Busy()) Controls.popupmenuy->popup(position);
}

}  // namespace Sonmira
