#pragma once

#include <QImage>
#include <QPoint>
#include <QWidget>

#include <cmath>

namespace Sonmira {

// A control as a screen of that scale shows it, at a place in its window.
inline QImage Rendered(QWidget& control, double scale, const QPoint& place = {}) {
    const QSize room = control.size() + QSize(place.x(), place.y());
    QImage screen((QSizeF(room) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    screen.fill(Qt::transparent);
    screen.setDevicePixelRatio(scale);
    control.render(&screen, place, {}, QWidget::DrawChildren);
    screen.setDevicePixelRatio(1);
    return screen;
}

// The nearest pixel of the screen, a half upwards.
inline int OnScreen(double logical, double scale) {
    return static_cast<int>(std::floor(logical * scale + 0.5));
}

// One copy of a bitmap to a place on the screen.
struct Copy {
    QPoint Place;
    QImage Bitmap;
};

// What stands at a pixel after all copies: what the last one that reaches it has there. This looks back from
// the pixel, where the control goes forward from the bitmaps.
inline QRgb PixelAfter(const QList<Copy>& copies, const QPoint& pixel) {
    for (auto copy = copies.crbegin(); copy != copies.crend(); ++copy) {
        if (copy->Bitmap.rect().translated(copy->Place).contains(pixel)) {
            return copy->Bitmap.pixel(pixel - copy->Place);
        }
    }
    return 0;
}

// The first pixel, of every so many in reading order, that differs from what the copies leave there, or
// nothing.
inline QString Difference(const QImage& screen, const QList<Copy>& copies, int every = 1) {
    for (int pixel = 0; pixel < screen.width() * screen.height(); pixel += every) {
        const int x = pixel % screen.width();
        const int y = pixel / screen.width();
        const QRgb wanted = PixelAfter(copies, {x, y});
        if (screen.pixel(x, y) == wanted) continue;
        return QStringLiteral("%1, %2 is %3 instead of %4")
            .arg(x)
            .arg(y)
            .arg(screen.pixel(x, y), 8, 16)
            .arg(wanted, 8, 16);
    }
    return {};
}

}  // namespace Sonmira
