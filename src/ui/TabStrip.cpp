#include "ui/TabStrip.h"

#include "kit/Palette.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace Sonmira {

namespace {

constexpr int DesignHeight = 30;
constexpr int LeastTabWidth = 60;

}  // namespace

TabStrip::TabStrip(QWidget* parent) : QTabBar(parent) {
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(false);
    setElideMode(Qt::ElideRight);
    setIconSize(QSize(16, 16));
}

int TabStrip::StripHeight() const {
    return qMax(DesignHeight, 2 * fontMetrics().height());
}

QSize TabStrip::tabSizeHint(int index) const {
    return {QTabBar::tabSizeHint(index).width(), StripHeight()};
}

QSize TabStrip::minimumTabSizeHint(int /*index*/) const {
    return {LeastTabWidth, StripHeight()};
}

bool TabStrip::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QTabBar::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int tab = tabAt(help->pos());
    // Says what a narrow tab could not.
    const bool isCut = tab >= 0 && tabRect(tab).width() < tabSizeHint(tab).width();
    QToolTip::showText(help->globalPos(), isCut ? tabText(tab) : QString(), this);
    return true;
}

void TabStrip::paintEvent(QPaintEvent* event) {
    QPainter(this).fillRect(0, StripHeight() - 1, width(), 1, CurrentPalette().CardBorder);
    QTabBar::paintEvent(event);
}

void TabStrip::wheelEvent(QWheelEvent* event) {
    // A turn of the wheel that misses a list must not change the page.
    event->ignore();
}

}  // namespace Sonmira
