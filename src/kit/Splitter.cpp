#include "kit/Splitter.h"

#include "kit/Accessible.h"
#include "kit/PropertyStore.h"
#include "kit/SplitterBar.h"
#include "kit/Twips.h"

#include <QEvent>

#include <algorithm>
#include <limits>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

qint16 Saturated(int value) {
    using Limits = std::numeric_limits<qint16>;
    return static_cast<qint16>(std::clamp<int>(value, Limits::min(), Limits::max()));
}

// What a 16-bit size property keeps of a number.
int Size(int value) {
    return std::max<int>(Saturated(value), 0);
}

bool IsListView(const QWidget& control) {
    const QVariant given = control.property(Splitter::TypeNameProperty);
    const QString type = given.isValid()
                             ? given.toString()
                             : QString::fromLatin1(control.metaObject()->className()).section(u"::"_s, -1);
    return type.compare(Splitter::ListViewType, Qt::CaseInsensitive) == 0;
}

}  // namespace

// Does something unless it is being done already.
class Splitter::ReentrancyGuard {
public:
    ReentrancyGuard(Splitter& splitter, Doing what)
        : Owner(splitter), What(what), IsFirst(!splitter.IsDoing(what)) {
        if (IsFirst) Owner.Flags |= What;
    }
    ~ReentrancyGuard() {
        if (IsFirst) Owner.Flags &= ~unsigned{What};
    }
    Q_DISABLE_COPY_MOVE(ReentrancyGuard)
    explicit operator bool() const { return IsFirst; }

private:
    Splitter& Owner;
    const Doing What;
    const bool IsFirst;
};

Splitter::Splitter(QWidget* parent) : QFrame(parent), Bar(new SplitterBar(*this)) {
    InstallKitAccessibility();
    // A new control stands where the ratio of one half is; a stored one begins at the stored position.
    GiveAll({}, Geometry.PositionFromRatio(Length(), Values.RatioFromTop));
}

qint16 Splitter::SplitterSize() const {
    return Saturated(Geometry.SplitterSize);
}

qint16 Splitter::SplitterPos() const {
    return Saturated(Values.SplitterPos);
}

qint16 Splitter::CurrSplitterPos() const {
    return Saturated(Position);
}

qint16 Splitter::MaxSize() const {
    return Saturated(Geometry.MaxSize);
}

qint16 Splitter::MinSize1() const {
    return Saturated(Geometry.MinSize1);
}

qint16 Splitter::MinSize2() const {
    return Saturated(Geometry.MinSize2);
}

qint16 Splitter::MinSizeAux() const {
    return Saturated(Geometry.MinSizeAux);
}

int Splitter::Length() const {
    return ToTwips(IsBarHorizontal() ? contentsRect().height() : contentsRect().width());
}

int Splitter::Across() const {
    return ToTwips(IsBarHorizontal() ? contentsRect().width() : contentsRect().height());
}

QRect Splitter::OnScreen(const QRect& twips) const {
    const QRect inner = contentsRect();
    QRect pixels = ToPixels(twips);
    if (isRightToLeft()) pixels.moveLeft(inner.width() - pixels.x() - pixels.width());
    return pixels.translated(inner.topLeft());
}

void Splitter::PlaceBar() {
    Bar->setGeometry(OnScreen(Geometry.BarPlace(Position, Cross)));
}

void Splitter::MoveBar(int position) {
    const ReentrancyGuard guard(*this, MovingBar);
    if (!guard) return;
    Position = Geometry.Clamp(Length(), std::max(position, 0));
    PlaceBar();
    SetCurrentRatio(Geometry.RatioFromPosition(Length(), Position));
    if (!IsDoing(SettingCurrentRatio)) LayOut();
}

void Splitter::SetCurrentRatio(float ratio) {
    const ReentrancyGuard guard(*this, SettingCurrentRatio);
    if (!guard) return;
    const int wanted = Geometry.PositionFromRatio(Length(), std::clamp(ratio, 0.F, 1.F));
    MoveBar(Geometry.Clamp(Length(), wanted));
    // May be another ratio than the wanted one, where the bar met a limit.
    CurrentRatio = Geometry.RatioFromPosition(Length(), Position);
    if (!IsDoing(MovingBar)) LayOut();
}

void Splitter::SetSplitterPos(int position) {
    WritePosition(Saturated(position));
}

void Splitter::WritePosition(int position) {
    const ReentrancyGuard guard(*this, SettingPosition);
    if (!guard) return;
    Values.SplitterPos = std::max(position, 0);
    Q_EMIT PropertyChanged(Property::SplitterPos);
    if (IsDoing(SettingRatio)) return;
    SetRatioFromTop(Geometry.RatioFromPosition(Length(), position));
    MoveBar(position);
}

void Splitter::SetRatioFromTop(float ratio) {
    const ReentrancyGuard guard(*this, SettingRatio);
    if (!guard) return;
    Values.RatioFromTop = ratio >= 1 ? 1 : ratio >= 0 ? ratio : 0;
    Q_EMIT PropertyChanged(Property::RatioFromTop);
    if (IsDoing(SettingPosition)) return;
    WritePosition(Geometry.PositionFromRatio(Length(), Values.RatioFromTop));
    SetCurrentRatio(Values.RatioFromTop);
}

void Splitter::ApplyMaintain() {
    if (Values.Maintain == 0) {
        MoveBar(Values.SplitterPos);
    } else {
        SetCurrentRatio(Values.RatioFromTop);
    }
}

void Splitter::ResizeControl() {
    Cross = Geometry.CrossSize(Across());
    const int wanted =
        Values.Maintain == 0 ? Values.SplitterPos : Geometry.PositionFromRatio(Length(), Values.RatioFromTop);
    Position = Geometry.Clamp(Length(), wanted);
    PlaceBar();
    MoveBar(Position);
}

QWidget* Splitter::Contained(const QString& name) const {
    if (name.isEmpty()) return nullptr;
    for (QObject* const child : children()) {
        if (child == Bar || !child->isWidgetType()) continue;
        if (child->objectName().compare(name, Qt::CaseInsensitive) == 0) return static_cast<QWidget*>(child);
    }
    return nullptr;
}

void Splitter::LayOut() {
    if (!LayoutEnabled) return;
    QWidget* const first = Contained(Values.Child1);
    QWidget* const second = Contained(Values.Child2);
    if (first != nullptr) {
        first->setGeometry(OnScreen(Geometry.Child1Place(Position, Cross, IsListView(*first))));
    }
    if (second != nullptr) {
        second->setGeometry(OnScreen(Geometry.Child2Place(Position, Cross, Length(), IsListView(*second))));
    }
    Q_EMIT Resize();
}

void Splitter::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    ResizeControl();
}

void Splitter::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() != QEvent::LayoutDirectionChange) return;
    PlaceBar();
    LayOut();
}

void Splitter::SetBorderStyle(qint32 style) {
    Values.BorderStyle = style;
    setFrameStyle(style == 0 ? QFrame::NoFrame : QFrame::Box | QFrame::Plain);
    ResizeControl();
    Q_EMIT PropertyChanged(Property::BorderStyle);
}

void Splitter::SetSplitterAppearance(qint32 appearance) {
    Values.SplitterAppearance = appearance;
    Q_EMIT PropertyChanged(Property::SplitterAppearance);
}

void Splitter::SetSplitterBorder(qint32 border) {
    Values.SplitterBorder = border;
    Q_EMIT PropertyChanged(Property::SplitterBorder);
}

void Splitter::SetSplitterColor(quint32 color) {
    Values.SplitterColor = color;
    Q_EMIT PropertyChanged(Property::SplitterColor);
}

void Splitter::SetOrientation(qint32 orientation) {
    const int kept = Position;
    Geometry.Orientation = orientation;
    Bar->setCursor(IsBarHorizontal() ? Qt::SizeVerCursor : Qt::SizeHorCursor);
    if (Values.Maintain == 0) MoveBar(kept);
    ResizeControl();
    Q_EMIT PropertyChanged(Property::Orientation);
}

void Splitter::SetSplitterSize(int size) {
    Geometry.SplitterSize = Size(size);
    ResizeControl();
    Q_EMIT PropertyChanged(Property::SplitterSize);
}

void Splitter::SetMaintain(qint32 maintain) {
    Values.Maintain = maintain;
    ApplyMaintain();
    Q_EMIT PropertyChanged(Property::Maintain);
}

void Splitter::SetChild1(const QString& name) {
    Values.Child1 = name;
    LayOut();
    Q_EMIT PropertyChanged(Property::Child1);
}

void Splitter::SetChild2(const QString& name) {
    Values.Child2 = name;
    LayOut();
    Q_EMIT PropertyChanged(Property::Child2);
}

// Of a largest and a smallest size that contradict each other, the one that is written last gives way.
void Splitter::SetMaxSize(int size) {
    const int least = Geometry.MaxSizeAppliesTo == 0 ? Geometry.MinSize1 : Geometry.MinSize2;
    Geometry.MaxSize = Size(size);
    if (Geometry.MaxSize > 0) Geometry.MaxSize = std::max(Geometry.MaxSize, least);
    ApplyMaintain();
    Q_EMIT PropertyChanged(Property::MaxSize);
}

void Splitter::SetMaxSizeAppliesTo(qint32 child) {
    Geometry.MaxSizeAppliesTo = child;
    ApplyMaintain();
    Q_EMIT PropertyChanged(Property::MaxSizeAppliesTo);
}

void Splitter::SetMinSize1(int size) {
    Geometry.MinSize1 = Size(size);
    if (Geometry.MaxSizeAppliesTo == 0 && Geometry.MaxSize > 0) {
        Geometry.MinSize1 = std::min(Geometry.MinSize1, Geometry.MaxSize);
    }
    ApplyMaintain();
    Q_EMIT PropertyChanged(Property::MinSize1);
}

void Splitter::SetMinSize2(int size) {
    Geometry.MinSize2 = Size(size);
    if (Geometry.MaxSizeAppliesTo == 1 && Geometry.MaxSize > 0) {
        Geometry.MinSize2 = std::min(Geometry.MinSize2, Geometry.MaxSize);
    }
    ApplyMaintain();
    Q_EMIT PropertyChanged(Property::MinSize2);
}

void Splitter::SetMinSizeAux(int size) {
    Geometry.MinSizeAux = Size(size);
    ResizeControl();
    Q_EMIT PropertyChanged(Property::MinSizeAux);
}

void Splitter::SetAllowResize(bool allow) {
    Values.AllowResize = allow;
    Bar->setVisible(allow);
    Q_EMIT PropertyChanged(Property::AllowResize);
}

void Splitter::SetLiveUpdate(bool live) {
    Values.LiveUpdate = live;
    Q_EMIT PropertyChanged(Property::LiveUpdate);
}

}  // namespace Sonmira
