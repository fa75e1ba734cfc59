#pragma once

#include <QColor>
#include <QRectF>

class QApplication;
class QPainter;

namespace Sonmira {

// The look of all windows: one style and one complete palette of our own, so that a desktop theme never
// leaves unreadable pairs of colours. Light or dark is taken over from the colours that the desktop gave to
// the application, so call it once, before anything else sets them. Windows get the icon of the program; one
// of another program may set its own afterwards.
void ApplyTheme(QApplication& application);

// The shapes that the look is made of. Each leaves the painter as it was.

namespace Shapes {

enum class Direction { Down, Up, Left, Right };

// A box with round corners and a border inside its rectangle. A transparent border is none.
void Box(QPainter& painter, const QRectF& room, const QColor& fill, const QColor& border, double radius,
         double width = 1);
// An input field. It tells by its border whether it has the focus.
void Field(QPainter& painter, const QRectF& room, bool enabled, bool hasFocus, bool readOnly);
// A small arrow without a shaft in the middle of the room.
void Chevron(QPainter& painter, const QRectF& room, Direction direction, const QColor& color);
// What tells that a control has the focus of the keyboard.
void FocusRing(QPainter& painter, const QRectF& room, double radius = 4);

enum class Mark { None, Tick, Dash };
void CheckMark(QPainter& painter, const QRectF& room, Mark mark, bool enabled, bool hovered);
void RadioMark(QPainter& painter, const QRectF& room, bool on, bool enabled, bool hovered);

}  // namespace Shapes

}  // namespace Sonmira
