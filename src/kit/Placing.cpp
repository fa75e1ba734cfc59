#include "kit/Placing.h"

#include "kit/Twips.h"
#include "platform/Failure.h"

#include <QWidget>

namespace Sonmira {

double FontScale(const QWidget& control) {
    constexpr double DesignLine = 15;  // pixels that a line of text takes in the design
    return qMax(1.0, control.fontMetrics().height() / DesignLine);
}

int Placing::Scaled(int twips) const {
    return qRound(twips * FontScale(Container));
}

int Placing::Width() const {
    return ToTwips(Container.width());
}
int Placing::Height() const {
    return ToTwips(Container.height());
}
int Placing::Left(const QWidget* control) const {
    return ToTwips(RoomOf(control).left());
}
int Placing::Top(const QWidget* control) const {
    return ToTwips(control->y());
}
int Placing::Width(const QWidget* control) const {
    return ToTwips(control->width());
}
int Placing::Height(const QWidget* control) const {
    return ToTwips(control->height());
}

void Placing::SetLeft(QWidget* control, int left) {
    QRect room = RoomOf(control);
    room.moveLeft(ToPixels(left));
    Move(control, room);
}

void Placing::SetTop(QWidget* control, int top) {
    QRect room = RoomOf(control);
    room.moveTop(ToPixels(top));
    Move(control, room);
}

void Placing::SetWidth(QWidget* control, int width) {
    if (width < 0) throw Failure(FailureNumber::InvalidPropertyValue);
    QRect room = RoomOf(control);
    room.setWidth(ToPixels(width));
    Move(control, room);
}

void Placing::SetHeight(QWidget* control, int height) {
    if (height < 0) throw Failure(FailureNumber::InvalidPropertyValue);
    QRect room = RoomOf(control);
    room.setHeight(ToPixels(height));
    Move(control, room);
}

void Placing::Place(QWidget* control, int left, int top, int width, int height) {
    const QRect room(ToPixels(left), ToPixels(top), ToPixels(qMax(0, width)), ToPixels(qMax(0, height)));
    Placed[control] = room;
    control->setGeometry(OnScreen(room));
}

void Placing::Mirror() {
    if (!Container.isRightToLeft()) return;
    for (QWidget* control : Container.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        const auto placed = Placed.constFind(control);
        if (placed != Placed.cend()) control->setGeometry(OnScreen(placed.value()));
    }
}

QRect Placing::RoomOf(const QWidget* control) const {
    if (!Container.isRightToLeft()) return control->geometry();
    // From where it is on the screen its distance from the right edge cannot be told while that edge moves.
    const auto placed = Placed.constFind(control);
    return placed != Placed.cend() ? placed.value() : OnScreen(control->geometry());
}

void Placing::Move(QWidget* control, const QRect& room) {
    const auto placed = Placed.find(control);
    if (placed != Placed.end()) placed.value() = room;
    control->setGeometry(OnScreen(room));
}

QRect Placing::OnScreen(const QRect& room) const {
    if (!Container.isRightToLeft()) return room;
    return {Container.width() - room.left() - room.width(), room.top(), room.width(), room.height()};
}

}  // namespace Sonmira
