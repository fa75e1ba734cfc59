#include "library/widgets/ConversionTree.h"

#include "kit/Icons.h"
#include "kit/Palette.h"
#include "library/Collection.h"
#include "library/widgets/ReportList.h"
#include "platform/Failure.h"
#include "platform/Paths.h"
#include "platform/widgets/DesktopSignals.h"

#include <QDragEnterEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <QToolTip>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr int KeyRole = Qt::UserRole;
constexpr int NumberRole = Qt::UserRole + 1;
constexpr int NodeMargin = 5;  // around image and text of a node

int ButtonNumber(Qt::MouseButton button) {
    return button == Qt::RightButton ? 2 : 1;
}

}  // namespace

ConversionTree::ConversionTree(QWidget* parent) : QTreeWidget(parent) {
    setHeaderHidden(true);
    setUniformRowHeights(true);  // without it the cost of a row grows with the number of rows above it
    setAcceptDrops(true);
    setDragDropMode(QAbstractItemView::DropOnly);
    setIconSize(QSize(16, 16));
}

void ConversionTree::ResetToRoot() {
    clear();
    Nodes.clear();
    auto* root = new QTreeWidgetItem(this, {u"My Conversion"_s});
    root->setIcon(0, OwnIcon(u"collection"));
    root->setExpanded(true);
    Remember(RootKey.toString(), root);
}

void ConversionTree::Remember(const QString& key, QTreeWidgetItem* node) {
    node->setData(0, KeyRole, key);
    node->setData(0, NumberRole, ++LastNumber);
    Nodes.insert(key, node);
}

QString ConversionTree::KeyOf(const QTreeWidgetItem* node) {
    return node->data(0, KeyRole).toString();
}

NodeReference ConversionTree::ReferenceTo(const QTreeWidgetItem* node) {
    return {KeyOf(node), node->data(0, NumberRole).toULongLong()};
}

QTreeWidgetItem* ConversionTree::NodeBehind(const NodeReference& reference) const {
    QTreeWidgetItem* const node = NodeOf(reference.Key);
    const bool isSame = node != nullptr && ReferenceTo(node).Number == reference.Number;
    if (!isSame) throw Failure(FailureNumber::ObjectNotSet);
    return node;
}

void ConversionTree::RemoveNode(const NodeReference& reference) {
    QTreeWidgetItem* const node = NodeBehind(reference);
    ForgetBelow(node);
    delete node;
}

void ConversionTree::ForgetBelow(const QTreeWidgetItem* node) {
    std::vector<const QTreeWidgetItem*> left{node};
    while (!left.empty()) {
        const QTreeWidgetItem* const one = left.back();
        left.pop_back();
        Nodes.remove(KeyOf(one));
        for (int n = 0; n < one->childCount(); ++n) left.push_back(one->child(n));
    }
}

void ConversionTree::SetEmptyHint(const QString& hint) {
    EmptyHint = hint;
    viewport()->update();
}

void ConversionTree::AddNode(const QString& parentKey, const QString& key, const QString& text,
                             const QString& imageKey) {
    if (Nodes.contains(key)) throw Failure(FailureNumber::KeyNotUnique);
    QTreeWidgetItem* const parent = NodeOf(parentKey);
    if (parent == nullptr) throw Failure(FailureNumber::KeyNotFound);
    const QIcon image = Images.At(imageKey);
    // Joins its parent last and complete: each change of a node that is in the tree costs a search among the
    // rows on the screen.
    auto* node = new QTreeWidgetItem({ShownName(text)});
    node->setIcon(0, image);
    Remember(key, node);
    parent->addChild(node);
}

void ConversionTree::GetIcon(const QString& path) {
    const QString key = ExtensionOf(path);
    if (!Images.Contains(key)) Images.Add(key, FormatIcon(key));
}

void ConversionTree::GetIcon4(const QString& path) {
    const QString folderKey = FolderImage.toString();
    if (Images.Contains(folderKey)) return;
    if (IsDriveRoot(path)) {
        Images.Add(DriveImage.toString(), OwnIcon(u"drive"));
    } else {
        Images.Add(folderKey, OwnIcon(u"folder"));
    }
}

QTreeWidgetItem* ConversionTree::NodeAt(const QPoint& position) const {
    QTreeWidgetItem* const node = itemAt(position);
    return node != nullptr && visualItemRect(node).contains(position) ? node : nullptr;
}

void ConversionTree::mousePressEvent(QMouseEvent* event) {
    Q_EMIT MouseDown(ButtonNumber(event->button()));
    const QTreeWidgetItem* const node = NodeAt(event->position().toPoint());
    Pressed = node == nullptr ? NodeReference() : ReferenceTo(node);
    QTreeWidget::mousePressEvent(event);
}

void ConversionTree::mouseReleaseEvent(QMouseEvent* event) {
    QTreeWidget::mouseReleaseEvent(event);
    QTreeWidgetItem* const node = NodeAt(event->position().toPoint());
    const NodeReference pressed = std::exchange(Pressed, {});
    const bool isClick = event->button() == Qt::LeftButton || event->button() == Qt::RightButton;
    if (!isClick || node == nullptr || ReferenceTo(node).Number != pressed.Number) return;
    Q_EMIT NodeClick(node, event->globalPosition().toPoint());
}

void ConversionTree::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete && !selectedItems().isEmpty()) {
        Q_EMIT DeletePressed();
        return;
    }
    QTreeWidget::keyPressEvent(event);
}

void ConversionTree::paintEvent(QPaintEvent* event) {
    QTreeWidget::paintEvent(event);
    if (NodeCount() <= 1) PaintEmptyHint(*viewport(), EmptyHint);
    if (!IsDropPlace) return;
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    constexpr double Radius = 6;
    painter.setPen(QPen(CurrentPalette().Accent, 2, Qt::DashLine, Qt::RoundCap));
    painter.drawRoundedRect(QRectF(viewport()->rect()).adjusted(4, 4, -4, -4), Radius, Radius);
}

// A selected row has a bar of the accent at its start.
void ConversionTree::drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                             const QModelIndex& index) const {
    QTreeWidget::drawRow(painter, options, index);
    if (!selectionModel()->isSelected(index)) return;
    constexpr int Bar = 3;
    const int left = isRightToLeft() ? viewport()->width() - Bar : 0;
    painter->fillRect(left, options.rect.top(), Bar, options.rect.height(), CurrentPalette().Accent);
}

// A name that has not room enough is told whole.
bool ConversionTree::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QTreeWidget::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QTreeWidgetItem* const node = itemAt(help->pos());
    const QString text = node == nullptr ? QString() : node->text(0);
    const QRect room = node == nullptr ? QRect() : visualItemRect(node);
    const int wanted = fontMetrics().horizontalAdvance(text) + iconSize().width() + 2 * NodeMargin;
    const bool isCut = wanted > room.width() || !viewport()->rect().contains(room);
    QToolTip::showText(help->globalPos(), isCut ? text : QString(), viewport(), room);
    return true;
}

void ConversionTree::dragEnterEvent(QDragEnterEvent* event) {
    dragMoveEvent(event);
}

void ConversionTree::dragMoveEvent(QDragMoveEvent* event) {
    AcceptFiles(*event);
    ShowDropPlace(event->isAccepted());
}

void ConversionTree::dragLeaveEvent(QDragLeaveEvent* event) {
    QTreeWidget::dragLeaveEvent(event);
    ShowDropPlace(false);
}

void ConversionTree::ShowDropPlace(bool shown) {
    if (IsDropPlace == shown) return;
    IsDropPlace = shown;
    viewport()->update();
}

void ConversionTree::dropEvent(QDropEvent* event) {
    ShowDropPlace(false);
    const QStringList paths = DroppedPaths(*event);
    // The program that the files come from waits until this event ends, so the work starts after it.
    QTimer::singleShot(0, this, [this, paths] { Q_EMIT FilesDropped(paths); });
}

}  // namespace Sonmira
