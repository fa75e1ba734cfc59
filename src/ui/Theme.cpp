#include "ui/Theme.h"

#include "kit/Icons.h"
#include "kit/Palette.h"
#include "ui/CalmStyle.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace Sonmira {

void ApplyTheme(QApplication& application) {
    DecidePalette(QApplication::palette());
    const Palette& colors = CurrentPalette();
    application.setStyle(new CalmStyle);
    QPalette palette(colors.Text, colors.Surface, colors.Hairline, colors.Border, colors.Border, colors.Text,
                     colors.OnAccent, colors.Field, colors.Window);
    palette.setColor(QPalette::Base, colors.Surface);
    palette.setColor(QPalette::AlternateBase, colors.Caption);
    palette.setColor(QPalette::Highlight, colors.Selection);
    palette.setColor(QPalette::HighlightedText, colors.Text);
    palette.setColor(QPalette::PlaceholderText, colors.Secondary);
    palette.setColor(QPalette::Link, colors.AccentText);
    palette.setColor(QPalette::LinkVisited, colors.AccentText);
    palette.setColor(QPalette::ToolTipBase, colors.Surface);
    palette.setColor(QPalette::ToolTipText, colors.Text);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, colors.Disabled);
    }
    QApplication::setPalette(palette);
    QApplication::setWindowIcon(OwnIcon(u"sonmira"));
}

namespace Shapes {

namespace {

// Smooth edges, and the painter back as it was.
class Smooth {
public:
    explicit Smooth(QPainter& painter) : Painter(painter) {
        Painter.save();
        Painter.setRenderHint(QPainter::Antialiasing);
    }
    ~Smooth() { Painter.restore(); }
    Smooth(const Smooth&) = delete;
    Smooth& operator=(const Smooth&) = delete;

private:
    QPainter& Painter;
};

QPen Stroke(const QColor& color, double width) {
    return {color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

}  // namespace

void Box(QPainter& painter, const QRectF& room, const QColor& fill, const QColor& border, double radius,
         double width) {
    const Smooth smooth(painter);
    const bool hasBorder = border.alpha() > 0;
    painter.setPen(hasBorder ? QPen(border, width) : QPen(Qt::NoPen));
    painter.setBrush(fill);
    const double half = hasBorder ? width / 2 : 0;
    painter.drawRoundedRect(room.adjusted(half, half, -half, -half), radius, radius);
}

void Field(QPainter& painter, const QRectF& room, bool enabled, bool hasFocus, bool readOnly) {
    const Palette& colors = CurrentPalette();
    const QColor fill = readOnly || !enabled ? colors.Caption : colors.Field;
    const QColor border = hasFocus && enabled ? colors.Accent : enabled ? colors.Border : colors.Hairline;
    Box(painter, room, fill, border, 4, hasFocus && enabled ? 1.6 : 1);
}

void Chevron(QPainter& painter, const QRectF& room, Direction direction, const QColor& color) {
    const Smooth smooth(painter);
    constexpr double Wide = 3.6;
    constexpr double Deep = 1.8;
    static constexpr double Turn[] = {0, 180, 90, 270};
    painter.translate(room.center());
    painter.rotate(Turn[static_cast<int>(direction)]);
    painter.setPen(Stroke(color, 1.6));
    painter.drawPolyline(QPolygonF({{-Wide, -Deep}, {0, Deep}, {Wide, -Deep}}));
}

void FocusRing(QPainter& painter, const QRectF& room, double radius) {
    Box(painter, room, Qt::transparent, CurrentPalette().Accent, radius, 1.6);
}

void CheckMark(QPainter& painter, const QRectF& room, Mark mark, bool enabled, bool hovered) {
    const Palette& colors = CurrentPalette();
    const bool isSet = mark != Mark::None;
    const QColor edge = !enabled ? colors.Disabled : isSet || hovered ? colors.Accent : colors.Border;
    const QColor fill = isSet ? (enabled ? colors.Accent : colors.Disabled) : colors.Field;
    const double side = qMin(room.width(), room.height());
    QRectF box(0, 0, side, side);
    box.moveCenter(room.center());
    Box(painter, box, fill, edge, side / 4, 1.2);
    if (!isSet) return;
    const Smooth smooth(painter);
    painter.setPen(Stroke(colors.OnAccent, side / 8));
    painter.translate(box.topLeft());
    painter.scale(side / 16, side / 16);
    if (mark == Mark::Tick) {
        painter.drawPolyline(QPolygonF({{4.4, 8.4}, {7.0, 11.0}, {11.8, 5.4}}));
    } else {
        painter.drawLine(QPointF(4.6, 8), QPointF(11.4, 8));
    }
}

void RadioMark(QPainter& painter, const QRectF& room, bool on, bool enabled, bool hovered) {
    const Palette& colors = CurrentPalette();
    const QColor edge = !enabled ? colors.Disabled : on || hovered ? colors.Accent : colors.Border;
    const double side = qMin(room.width(), room.height());
    QRectF disc(0, 0, side, side);
    disc.moveCenter(room.center());
    Box(painter, disc, colors.Field, edge, side / 2, 1.2);
    if (!on) return;
    const double rest = side * 0.27;
    Box(painter, disc.adjusted(rest, rest, -rest, -rest), enabled ? colors.Accent : colors.Disabled,
        Qt::transparent, side / 2);
}

}  // namespace Shapes

}  // namespace Sonmira
