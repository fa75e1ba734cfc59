// The controls of several parts: lists, number fields, sliders, scroll bars and groups.
#include "kit/Palette.h"
#include "ui/CalmStyle.h"
#include "ui/Theme.h"

#include <QPainter>
#include <QStyleOption>

namespace Sonmira {

using Shapes::Direction;

namespace {

constexpr int ScrollMargin = 3;
constexpr int LeastThumb = 24;

bool HasState(const QStyleOption& option, QStyle::StateFlag state) {
    return option.state.testFlag(state);
}

bool IsEnabled(const QStyleOption& option) {
    return HasState(option, QStyle::State_Enabled);
}

}  // namespace

void CalmStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
    switch (control) {
        case CC_ComboBox:
            return DrawCombo(*option, *painter, widget);
        case CC_SpinBox:
            return DrawSpin(*option, *painter, widget);
        case CC_ScrollBar:
            return DrawScroll(*option, *painter, widget);
        case CC_Slider:
            return DrawSlider(*option, *painter, widget);
        case CC_GroupBox:
            return DrawGroup(*option, *painter);
        default:
            QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}

// A card with its caption above; a flat group is a line of controls with its caption before them.
void CalmStyle::DrawGroup(const QStyleOptionComplex& option, QPainter& painter) const {
    const auto* group = qstyleoption_cast<const QStyleOptionGroupBox*>(&option);
    if (group == nullptr) return;
    const bool isFlat = group->features.testFlag(QStyleOptionFrame::Flat);
    QRect caption = group->rect;
    if (!isFlat) {
        constexpr int Gap = 2;
        caption.setHeight(group->text.isEmpty() ? 0 : group->fontMetrics.height());
        const Palette& colors = CurrentPalette();
        Shapes::Box(painter, group->rect.adjusted(0, caption.height() + Gap, 0, 0), colors.Surface,
                    colors.CardBorder, 6);
    }
    drawItemText(
        &painter, caption,
        int(visualAlignment(group->direction, Qt::AlignLeft)) | Qt::AlignVCenter | Qt::TextSingleLine,
        group->palette, IsEnabled(option), group->text, QPalette::WindowText);
}

void CalmStyle::DrawSlider(const QStyleOptionComplex& option, QPainter& painter,
                           const QWidget* widget) const {
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(&option);
    if (slider == nullptr) return;
    if (slider->subControls.testFlag(SC_SliderTickmarks)) {
        QStyleOptionSlider ticks = *slider;
        ticks.subControls = SC_SliderTickmarks;
        QProxyStyle::drawComplexControl(CC_Slider, &ticks, &painter, widget);
    }
    const Palette& colors = CurrentPalette();
    const QColor accent = IsEnabled(option) ? colors.Accent : colors.Disabled;
    const QRectF handle = proxy()->subControlRect(CC_Slider, &option, SC_SliderHandle, widget);
    QRectF groove = proxy()->subControlRect(CC_Slider, &option, SC_SliderGroove, widget);
    constexpr double Thickness = 4;
    QRectF done;
    if (slider->orientation == Qt::Horizontal) {
        groove = {groove.left(), handle.center().y() - Thickness / 2, groove.width(), Thickness};
        done = groove;
        (slider->upsideDown ? done.setLeft(handle.center().x()) : done.setRight(handle.center().x()));
    } else {
        groove = {handle.center().x() - Thickness / 2, groove.top(), Thickness, groove.height()};
        done = groove;
        (slider->upsideDown ? done.setBottom(handle.center().y()) : done.setTop(handle.center().y()));
    }
    Shapes::Box(painter, groove, colors.Track, Qt::transparent, Thickness / 2);
    Shapes::Box(painter, done, accent, Qt::transparent, Thickness / 2);
    constexpr double Knob = 12;
    QRectF knob(0, 0, Knob, Knob);
    knob.moveCenter(handle.center());
    Shapes::Box(painter, knob, colors.Field, accent, Knob / 2, 2);
    if (HasState(option, State_HasFocus))
        Shapes::FocusRing(painter, knob.adjusted(-3, -3, 3, 3), Knob / 2 + 3);
}

void CalmStyle::DrawCombo(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const {
    Shapes::Field(painter, option.rect, IsEnabled(option), HasState(option, State_HasFocus), false);
    const QRect arrow = proxy()->subControlRect(CC_ComboBox, &option, SC_ComboBoxArrow, widget);
    const Palette& colors = CurrentPalette();
    Shapes::Chevron(painter, arrow, Direction::Down, IsEnabled(option) ? colors.Ink : colors.Disabled);
}

void CalmStyle::DrawSpin(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const {
    const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(&option);
    if (spin == nullptr) return;
    Shapes::Field(painter, option.rect, IsEnabled(option), HasState(option, State_HasFocus), false);
    const Palette& colors = CurrentPalette();
    const auto arrow = [&](SubControl part, Direction direction, QAbstractSpinBox::StepEnabledFlag step) {
        const QRect room = proxy()->subControlRect(CC_SpinBox, &option, part, widget);
        const bool isFree = IsEnabled(option) && spin->stepEnabled.testFlag(step);
        Shapes::Chevron(painter, room, direction, isFree ? colors.Ink : colors.Disabled);
    };
    arrow(SC_SpinBoxUp, Direction::Up, QAbstractSpinBox::StepUpEnabled);
    arrow(SC_SpinBoxDown, Direction::Down, QAbstractSpinBox::StepDownEnabled);
}

void CalmStyle::DrawScroll(const QStyleOptionComplex& option, QPainter& painter,
                           const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(&option);
    if (bar == nullptr || bar->minimum == bar->maximum) return;
    const Palette& colors = CurrentPalette();
    const QRectF thumb = proxy()->subControlRect(CC_ScrollBar, &option, SC_ScrollBarSlider, widget);
    const bool isHeld = option.activeSubControls.testFlag(SC_ScrollBarSlider);
    Shapes::Box(painter, thumb.adjusted(ScrollMargin, ScrollMargin, -ScrollMargin, -ScrollMargin),
                isHeld ? colors.Secondary : colors.Border, Qt::transparent,
                qMin(thumb.width(), thumb.height()) / 2 - ScrollMargin);
}

QRect CalmStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
    if (control == CC_ComboBox && part == SC_ComboBoxEditField) {
        const QRect room = QProxyStyle::subControlRect(control, option, part, widget);
        return visualRect(
            option->direction, option->rect,
            visualRect(option->direction, option->rect, room).adjusted(FieldMargin - 1, 0, 0, 0));
    }
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control != CC_ScrollBar || bar == nullptr)
        return QProxyStyle::subControlRect(control, option, part, widget);
    // A bar without buttons.
    const bool lies = bar->orientation == Qt::Horizontal;
    const int length = lies ? bar->rect.width() : bar->rect.height();
    const int range = qMax(1, bar->maximum - bar->minimum);
    const int thumb =
        qBound(qMin(LeastThumb, length),
               static_cast<int>(qint64{bar->pageStep} * length / (qint64{range} + bar->pageStep)), length);
    const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition, length - thumb,
                                              bar->upsideDown);
    const auto stretch = [&](int from, int size) {
        const QRect room = lies ? QRect(bar->rect.x() + from, bar->rect.y(), size, bar->rect.height())
                                : QRect(bar->rect.x(), bar->rect.y() + from, bar->rect.width(), size);
        return visualRect(bar->direction, bar->rect, room);
    };
    switch (part) {
        case SC_ScrollBarSlider:
            return stretch(start, thumb);
        case SC_ScrollBarSubPage:
            return stretch(0, start);
        case SC_ScrollBarAddPage:
            return stretch(start + thumb, length - start - thumb);
        case SC_ScrollBarGroove:
            return bar->rect;
        default:
            return {};
    }
}

}  // namespace Sonmira
