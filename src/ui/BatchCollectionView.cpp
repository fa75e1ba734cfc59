#include "ui/BatchCollectionView.h"

#include "library/widgets/ConversionTree.h"
#include "platform/EventLoop.h"
#include "platform/NativePath.h"
#include "platform/Values.h"
#include "ui/BatchConverterForm.h"

#include <QLabel>

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

}  // namespace Sonmira
