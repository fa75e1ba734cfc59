#include "ui/CalmStyle.h"

#include "kit/Palette.h"
#include "ui/CutTexts.h"
#include "ui/Theme.h"

#include <QAbstractItemView>
#include <QMainWindow>
#include <QPainter>
#include <QPushButton>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTabBar>

namespace Sonmira {

using namespace Qt::StringLiterals;
using Shapes::Direction;

namespace {

constexpr int FieldHeight = 24;
constexpr int RowHeight = 22;
constexpr int HeaderHeight = 24;
constexpr int TabHeight = 30;
constexpr int ToolbarButtonWidth = 58;
constexpr int ToolbarButtonHeight = 50;
constexpr int ScrollExtent = 12;
constexpr int TabMargin = 8;

bool HasState(const QStyleOption* option, QStyle::StateFlag state) {
    return option->state.testFlag(state);
}

bool IsEnabled(const QStyleOption* option) {
    return HasState(option, QStyle::State_Enabled);
}

bool IsHovered(const QStyleOption* option) {
    return IsEnabled(option) && HasState(option, QStyle::State_MouseOver);
}

// The button of a dialog that Enter presses, or the one that a page is made for.
bool IsDefaultButton(const QStyleOption* option) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    return button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton) &&
           IsEnabled(option);
}

bool IsOfWindow(const QWidget* bar) {
    return bar != nullptr && qobject_cast<const QMainWindow*>(bar->parentWidget()) != nullptr;
}

void PushButton(const QStyleOption* option, QPainter& painter) {
    const Palette& colors = CurrentPalette();
    const bool isDown = HasState(option, QStyle::State_Sunken) || HasState(option, QStyle::State_On);
    if (IsDefaultButton(option)) {
        const QColor fill = isDown || IsHovered(option) ? colors.AccentDark : colors.Accent;
        Shapes::Box(painter, option->rect, fill, Qt::transparent, 5);
        return;
    }
    const QColor fill = !IsEnabled(option)  ? colors.Caption
                        : isDown            ? colors.Selection
                        : IsHovered(option) ? colors.Tint
                                            : colors.Surface;
    Shapes::Box(painter, option->rect, fill, IsEnabled(option) ? colors.Border : colors.Hairline, 5);
}

// A tool button is flat in a toolbar and a small push button elsewhere.
void ToolButton(const QStyleOption* option, QPainter& painter) {
    if (!HasState(option, QStyle::State_AutoRaise)) return PushButton(option, painter);
    const Palette& colors = CurrentPalette();
    const bool isDown = HasState(option, QStyle::State_Sunken) || HasState(option, QStyle::State_On);
    if (!isDown && !IsHovered(option)) return;
    Shapes::Box(painter, QRectF(option->rect).adjusted(1, 1, -1, -1), isDown ? colors.Selection : colors.Tint,
                Qt::transparent, 5);
}

void Row(const QStyleOption* option, QPainter& painter) {
    const Palette& colors = CurrentPalette();
    if (const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
        item != nullptr && item->backgroundBrush.style() != Qt::NoBrush) {
        painter.fillRect(option->rect, item->backgroundBrush);
    }
    if (HasState(option, QStyle::State_Selected)) {
        painter.fillRect(option->rect, colors.Selection);
    } else if (IsHovered(option)) {
        QColor faint = colors.Tint;
        faint.setAlphaF(0.55F);
        painter.fillRect(option->rect, faint);
    }
}

void Branch(const QStyleOption* option, QPainter& painter) {
    if (!HasState(option, QStyle::State_Children)) return;
    const Direction closed = option->direction == Qt::RightToLeft ? Direction::Left : Direction::Right;
    Shapes::Chevron(painter, option->rect, HasState(option, QStyle::State_Open) ? Direction::Down : closed,
                    CurrentPalette().Secondary);
}

}  // namespace

CalmStyle::CalmStyle() : QProxyStyle(QStyleFactory::create(u"Fusion"_s)) {}

void CalmStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    ShowElidedTexts(*widget);
    if (qobject_cast<QAbstractButton*>(widget) != nullptr) widget->setAttribute(Qt::WA_Hover);
}

void CalmStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    const Palette& colors = CurrentPalette();
    switch (element) {
        case PE_PanelLineEdit:
        case PE_FrameLineEdit: {
            const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            if (frame != nullptr && frame->lineWidth > 0) {
                Shapes::Field(*painter, option->rect, IsEnabled(option), HasState(option, State_HasFocus),
                              HasState(option, State_ReadOnly));
            }
            return;
        }
        case PE_FrameFocusRect: {
            // In a list the selected row tells where the keyboard is, and a thin line where none is selected.
            const bool isRow = qobject_cast<const QAbstractItemView*>(widget) != nullptr;
            if (!isRow) {
                Shapes::FocusRing(*painter, option->rect);
            } else if (!HasState(option, State_Selected)) {
                Shapes::Box(*painter, option->rect, Qt::transparent, colors.Border, 3);
            }
            return;
        }
        case PE_IndicatorCheckBox:
        case PE_IndicatorItemViewItemCheck:
            Shapes::CheckMark(*painter, option->rect,
                              HasState(option, State_On)         ? Shapes::Mark::Tick
                              : HasState(option, State_NoChange) ? Shapes::Mark::Dash
                                                                 : Shapes::Mark::None,
                              IsEnabled(option), IsHovered(option));
            return;
        case PE_IndicatorRadioButton:
            Shapes::RadioMark(*painter, option->rect, HasState(option, State_On), IsEnabled(option),
                              IsHovered(option));
            return;
        case PE_IndicatorBranch:
            return Branch(option, *painter);
        case PE_PanelItemViewRow:
        case PE_PanelItemViewItem:
            return Row(option, *painter);
        case PE_PanelButtonCommand:
            return PushButton(option, *painter);
        case PE_PanelButtonTool:
            return ToolButton(option, *painter);
        case PE_Frame:
        case PE_FrameGroupBox:
        case PE_FrameTabWidget:
            Shapes::Box(*painter, option->rect, element == PE_Frame ? Qt::transparent : colors.Surface,
                        colors.CardBorder, element == PE_Frame ? 4 : 6);
            return;
        case PE_FrameStatusBarItem:
            return;
        case PE_PanelStatusBar:
            painter->fillRect(option->rect, colors.Window);
            return;
        case PE_IndicatorToolBarSeparator: {
            const QPoint middle = option->rect.center();
            painter->fillRect(middle.x(), option->rect.top() + 6, 1, option->rect.height() - 12,
                              colors.Hairline);
            return;
        }
        default:
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void CalmStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    const Palette& colors = CurrentPalette();
    const QRect& room = option->rect;
    switch (element) {
        case CE_ToolBar:
            if (!IsOfWindow(widget)) return;
            painter->fillRect(room, colors.Surface);
            painter->fillRect(room.left(), room.bottom(), room.width(), 1, colors.Hairline);
            return;
        case CE_MenuBarEmptyArea:
            painter->fillRect(room, colors.Surface);
            return;
        case CE_MenuBarItem: {
            const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
            painter->fillRect(room, colors.Surface);
            if (HasState(option, State_Selected) && IsEnabled(option)) {
                Shapes::Box(*painter, QRectF(room).adjusted(1, 1, -1, -1), colors.Tint, Qt::transparent, 4);
            }
            if (item == nullptr) return;
            const bool underline = proxy()->styleHint(SH_UnderlineShortcut, option, widget, nullptr) != 0;
            drawItemText(painter, room,
                         Qt::AlignCenter | Qt::TextSingleLine |
                             (underline ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
                         item->palette, IsEnabled(option), item->text, QPalette::ButtonText);
            return;
        }
        case CE_HeaderSection:
        case CE_HeaderEmptyArea:
            painter->fillRect(room, colors.Caption);
            painter->fillRect(room.left(), room.bottom(), room.width(), 1, colors.Hairline);
            return;
        case CE_HeaderLabel: {
            const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
            if (header == nullptr) return;
            QStyleOptionHeader quiet = *header;
            quiet.palette.setColor(QPalette::ButtonText, colors.Secondary);
            QProxyStyle::drawControl(element, &quiet, painter, widget);
            return;
        }
        case CE_ItemViewItem: {
            const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
            if (item == nullptr || item->direction != Qt::RightToLeft) break;
            // Names of files and paths read from the left, whatever stands around them.
            QStyleOptionViewItem name = *item;
            name.text.prepend(QChar(0x200E));
            QProxyStyle::drawControl(element, &name, painter, widget);
            return;
        }
        case CE_TabBarTabShape:
            return DrawTab(*option, *painter);
        case CE_TabBarTabLabel:
            return DrawTabLabel(*option, *painter, widget);
        case CE_PushButtonLabel: {
            const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
            if (button == nullptr || !IsDefaultButton(option)) break;
            QStyleOptionButton chief = *button;
            chief.palette.setColor(QPalette::ButtonText, colors.OnAccent);
            QProxyStyle::drawControl(element, &chief, painter, widget);
            return;
        }
        default:
            break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void CalmStyle::DrawTab(const QStyleOption& option, QPainter& painter) {
    const Palette& colors = CurrentPalette();
    const QRect& room = option.rect;
    if (HasState(&option, State_Selected)) {
        constexpr int Underline = 3;
        Shapes::Box(painter, QRectF(room.left(), room.bottom() + 1 - Underline, room.width(), Underline),
                    colors.Accent, Qt::transparent, 1.5);
        if (HasState(&option, State_HasFocus)) {
            Shapes::FocusRing(painter, QRectF(room).adjusted(1, 1, -1, -Underline - 2));
        }
    } else if (IsHovered(&option)) {
        Shapes::Box(painter, QRectF(room).adjusted(1, 2, -1, -3), colors.Tint, Qt::transparent, 5);
    }
}

void CalmStyle::DrawTabLabel(const QStyleOption& option, QPainter& painter, const QWidget* widget) const {
    const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(&option);
    if (tab == nullptr) return;
    const Palette& colors = CurrentPalette();
    const bool isSelected = HasState(&option, State_Selected);
    QPalette palette = tab->palette;
    palette.setColor(QPalette::WindowText, !IsEnabled(tab) ? colors.Disabled
                                           : isSelected    ? colors.AccentText
                                                           : colors.Secondary);
    QRect room = tab->rect.adjusted(TabMargin, 0, -TabMargin, -2);
    const auto mirrored = [&](const QRect& part) { return visualRect(tab->direction, tab->rect, part); };
    if (!tab->icon.isNull()) {
        QRect icon(room.topLeft(), tab->iconSize);
        icon.moveTop(room.center().y() - icon.height() / 2);
        tab->icon.paint(&painter, mirrored(icon), Qt::AlignCenter,
                        IsEnabled(tab) ? QIcon::Normal : QIcon::Disabled);
        room.setLeft(icon.right() + TabMargin);
    }
    // The text of the option was cut for usual letters; the bar has it whole.
    const auto* bar = qobject_cast<const QTabBar*>(widget);
    const int index = bar == nullptr ? -1 : bar->tabAt(tab->rect.center());
    painter.save();
    QFont font = painter.font();
    font.setBold(isSelected);
    painter.setFont(font);
    drawItemText(
        &painter, mirrored(room),
        int(visualAlignment(tab->direction, Qt::AlignLeft)) | Qt::AlignVCenter | Qt::TextShowMnemonic,
        palette, true, index < 0 ? tab->text : bar->tabText(index), QPalette::WindowText);
    painter.restore();
}

// Keeps what the caller asked for, but for a text of one line that would not fit.
void CalmStyle::drawItemText(QPainter* painter, const QRect& room, int flags, const QPalette& palette,
                             bool enabled, const QString& text, QPalette::ColorRole role) const {
    const bool isOneLine = !text.contains(u'\n') && (flags & Qt::TextWordWrap) == 0;
    const QString shown =
        isOneLine ? painter->fontMetrics().elidedText(text, Qt::ElideRight, room.width(),
                                                      flags & (Qt::TextShowMnemonic | Qt::TextHideMnemonic))
                  : text;
    QProxyStyle::drawItemText(painter, room, flags, palette, enabled, shown, role);
}

QRect CalmStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    const QRect room = QProxyStyle::subElementRect(element, option, widget);
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    const bool isField = element == SE_LineEditContents && frame != nullptr && frame->lineWidth > 0;
    return isField ? room.adjusted(FieldMargin, 0, -FieldMargin, 0) : room;
}

QSize CalmStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                  const QWidget* widget) const {
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    const auto atLeast = [&](int width, int height) { return size.expandedTo(QSize(width, height)); };
    switch (type) {
        case CT_LineEdit:
        case CT_ComboBox:
        case CT_SpinBox:
            return atLeast(0, FieldHeight);
        case CT_PushButton:
            return atLeast(72, FieldHeight + 2);
        case CT_ItemViewItem:
            return atLeast(0, qMax(RowHeight, contents.height() + 4));
        case CT_HeaderSection:
            return atLeast(0, HeaderHeight);
        case CT_TabBarTab: {
            const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option);
            if (tab == nullptr) return size;
            // The selected tab is bold; all are as wide as if they were.
            QFont bold = widget != nullptr ? widget->font() : QFont();
            bold.setBold(true);
            const int text = QFontMetrics(bold).size(Qt::TextShowMnemonic, tab->text).width() + 2;
            const int icon = tab->icon.isNull() ? 0 : tab->iconSize.width() + TabMargin;
            return {text + icon + 2 * TabMargin, qMax(size.height(), TabHeight)};
        }
        case CT_ToolButton: {
            const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option);
            const bool isOfToolbar = widget != nullptr && IsOfWindow(widget->parentWidget());
            if (button == nullptr || !isOfToolbar || button->toolButtonStyle != Qt::ToolButtonTextUnderIcon)
                return size;
            return QSize(contents.width() + 8, contents.height() + 10)
                .expandedTo(QSize(ToolbarButtonWidth, ToolbarButtonHeight));
        }
        default:
            return size;
    }
}

int CalmStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
            return 16;
        case PM_ScrollBarExtent:
            return ScrollExtent;
        case PM_TabBarTabHSpace:
            return 2 * TabMargin;
        case PM_TabBarTabShiftVertical:
        case PM_TabBarTabShiftHorizontal:
        case PM_TabBarTabOverlap:
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
            return 0;
        case PM_TreeViewIndentation:
            return 18;
        case PM_ToolBarItemMargin:
            return IsOfWindow(widget) ? 2 : 0;
        case PM_ToolBarItemSpacing:
            return 2;
        case PM_ToolBarSeparatorExtent:
            return 9;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int CalmStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returned) const {
    switch (hint) {
        case SH_ItemView_ShowDecorationSelected:
            return 1;
        case SH_EtchDisabledText:
        case SH_DialogButtonBox_ButtonsHaveIcons:
        case SH_DitherDisabledText:
            return 0;
        default:
            return QProxyStyle::styleHint(hint, option, widget, returned);
    }
}

}  // namespace Sonmira
