#include "kit/SplitterBar.h"

#include "kit/Accessible.h"
#include "kit/Palette.h"
#include "kit/Splitter.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Sonmira {

using namespace Qt::StringLiterals;

int SplitterGeometry::CrossSize(int across) const {
    return std::max(across, MinSizeAux);
}

float SplitterGeometry::RatioFromPosition(int length, int position) const {
    if (length < 1) return 0;
    const int middle = position + SplitterSize / 2;
    return static_cast<float>(static_cast<double>(middle) / length);
}

int SplitterGeometry::PositionFromRatio(int length, float ratio) const {
    // The mode of the processor that nothing here changes rounds a tie to the even number.
    const int half = SplitterSize / 2;
    return static_cast<int>(std::nearbyint(static_cast<double>(length) * ratio - half));
}

// The order of the steps is what decides between limits that cannot all be kept.
int SplitterGeometry::Clamp(int length, int position) const {
    if (length <= MinimumTotal()) return MinSize1;
    position = std::max(position, 0);
    position = std::min(position, length - SplitterSize);
    if (MaxSize > 0) {
        position = MaxSizeAppliesTo == 0 ? std::min(position, MaxSize)
                                         : std::max(position, length - MaxSize - SplitterSize);
    }
    if (position <= MinSize1) return MinSize1;
    return std::min(position, length - MinSize2 - SplitterSize);
}

QRect SplitterGeometry::Oriented(int start, int size, int cross) const {
    return Orientation == 1 ? QRect(0, start, cross, size) : QRect(start, 0, size, cross);
}

QRect SplitterGeometry::BarPlace(int position, int cross) const {
    return Oriented(position, SplitterSize, cross);
}

QRect SplitterGeometry::Child1Place(int position, int cross, bool isListView) const {
    const int beyond = isListView ? ListViewOverlap : 0;
    return Oriented(0, position, cross).adjusted(-beyond, -beyond, beyond, beyond);
}

QRect SplitterGeometry::Child2Place(int position, int cross, int length, bool isListView) const {
    const int beyond = isListView ? ListViewOverlap : 0;
    const int start = position + SplitterSize;
    // It keeps its least size even where it sticks out at the end.
    return Oriented(start, std::max(length - start, MinSize2), cross)
        .adjusted(-beyond, -beyond, beyond, beyond);
}

namespace {

constexpr int KeyStep = 8;  // logical pixels an arrow key moves the bar

bool IsBarHorizontal(const Splitter& splitter) {
    return splitter.Orientation() == 1;
}

}  // namespace

QColor ColorOf(quint32 color) {
    constexpr quint32 SystemColor = 0x80000000;
    if ((color & SystemColor) == 0) {
        return {static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
                static_cast<int>(color >> 16 & 0xFF)};
    }
    const Palette& palette = CurrentPalette();
    switch (color & 0xFF) {
        case 5:  // window
            return palette.Surface;
        case 8:   // window text
        case 18:  // button text
            return palette.Text;
        case 13:  // highlight
            return palette.Accent;
        case 16:  // button shadow
            return palette.Border;
        default:  // button face and what else is a ground
            return palette.Window;
    }
}

SplitterBar::SplitterBar(Splitter& owner) : QFrame(&owner), Owner(owner) {
    // Before the name, at which the toolkit decides for good what describes the bar.
    InstallKitAccessibility();
    setObjectName(u"picSplitter"_s);
    setAccessibleName(u"Splitter"_s);
    // A click gives it the focus for the time of a drag only, so that the field that had it keeps it.
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
}

void SplitterBar::Highlight(qint32 appearance, qint32 border, quint32 color) {
    Fill = ColorOf(color);
    const bool isRaised = appearance == 1;
    setFrameStyle(border == 0 ? QFrame::NoFrame
                  : isRaised  ? QFrame::Panel | QFrame::Raised
                              : QFrame::Box | QFrame::Plain);
    setLineWidth(1);
    update();
}

void SplitterBar::RemoveHighlight() {
    Fill = QColor();
    setFrameStyle(QFrame::NoFrame);
    update();
}

int SplitterBar::PlaceAlong(const QPoint& screen) const {
    const QPoint place = mapFromGlobal(screen) - contentsRect().topLeft();
    if (IsBarHorizontal(Owner)) return place.y();
    return isRightToLeft() ? contentsRect().width() - place.x() : place.x();
}

void SplitterBar::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (IsHighlighted()) {
        painter.fillRect(rect(), Fill);
        painter.end();
        QFrame::paintEvent(event);
        return;
    }
    constexpr int Dots = 5;
    constexpr int Pitch = 6;
    constexpr double Radius = 1.5;
    const Palette& palette = CurrentPalette();
    const bool isMarked = hasFocus() || Owner.IsDragging() || underMouse();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (hasFocus() && !Owner.IsDragging()) {
        painter.setBrush(palette.Tint);
        painter.drawRoundedRect(rect(), 2, 2);
    }
    painter.setBrush(isMarked ? palette.Accent : palette.Border);
    const QPointF centre = QRectF(rect()).center();
    for (int n = 0; n < Dots; ++n) {
        const int away = (n - Dots / 2) * Pitch;
        painter.drawEllipse(IsBarHorizontal(Owner) ? centre + QPointF(away, 0) : centre + QPointF(0, away),
                            Radius, Radius);
    }
}

void SplitterBar::enterEvent(QEnterEvent* event) {
    QFrame::enterEvent(event);
    update();
}

void SplitterBar::leaveEvent(QEvent* event) {
    QFrame::leaveEvent(event);
    update();
}

// Nobody will ever tell a hidden bar that the button was let go.
void SplitterBar::hideEvent(QHideEvent* event) {
    QFrame::hideEvent(event);
    Owner.CancelDrag();
    GiveFocusBack();
}

// Escape reaches whoever has the focus.
void SplitterBar::TakeFocus() {
    FocusBefore = QApplication::focusWidget();
    setFocus(Qt::MouseFocusReason);
}

void SplitterBar::GiveFocusBack() {
    if (hasFocus() && FocusBefore != nullptr && FocusBefore != this)
        FocusBefore->setFocus(Qt::OtherFocusReason);
    FocusBefore = nullptr;
    update();
}

void SplitterBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    TakeFocus();
    Owner.StartDrag(event->globalPosition().toPoint());
}

void SplitterBar::mouseMoveEvent(QMouseEvent* event) {
    Owner.ContinueDrag(event->globalPosition().toPoint());
}

void SplitterBar::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    Owner.EndDrag();
    GiveFocusBack();
}

void SplitterBar::keyPressEvent(QKeyEvent* event) {
    if (Owner.IsDragging()) {
        if (event->key() == Qt::Key_Escape) {
            Owner.CancelDrag();
            GiveFocusBack();
        }
        return;
    }
    const bool lying = IsBarHorizontal(Owner);
    int steps = 0;
    if (event->key() == (lying ? Qt::Key_Up : Qt::Key_Left)) steps = -1;
    if (event->key() == (lying ? Qt::Key_Down : Qt::Key_Right)) steps = 1;
    if (steps == 0) {
        QFrame::keyPressEvent(event);
        return;
    }
    if (!lying && isRightToLeft()) steps = -steps;
    Owner.Step(steps * KeyStep);
}

bool SplitterBar::event(QEvent* event) {
    // A window may have given Escape to a command of its own. During a drag it is the drag's.
    if (event->type() == QEvent::ShortcutOverride && Owner.IsDragging() &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return QFrame::event(event);
}

}  // namespace Sonmira
