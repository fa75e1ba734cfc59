#pragma once

#include <QPainter>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <algorithm>
#include <cmath>

namespace Sonmira {

// Windows are measured in twips. Fifteen of them are one logical pixel, at every scale of the screen: the
// toolkit's own pixels grow with the scale, so nothing here asks for it.
constexpr int TwipsPerPixel = 15;

// Exact; 32 bits hold a screen of 143 million pixels.
constexpr int ToTwips(int pixels) {
    return pixels * TwipsPerPixel;
}

// To the nearest pixel, a half away from zero, so that a place and its mirror image round alike.
constexpr int ToPixels(int twips) {
    const int half = twips < 0 ? -(TwipsPerPixel / 2) : TwipsPerPixel / 2;
    return (twips + half) / TwipsPerPixel;
}

// A rectangle in twips on the pixels. The edges are rounded, not the size: what touches in twips touches on
// the screen, and nothing overlaps.
constexpr QRect ToPixels(const QRect& twips) {
    const int left = ToPixels(twips.x());
    const int top = ToPixels(twips.y());
    return {left, top, ToPixels(twips.x() + twips.width()) - left,
            ToPixels(twips.y() + twips.height()) - top};
}

// Logical pixels on the pixels of a screen of some scale. What is copied to whole pixels of the screen stays
// sharp; tiles meet because every place is rounded by itself, not the distances.
struct DeviceGrid {
    double Scale = 1;

    int At(int logical) const { return static_cast<int>(std::floor(logical * Scale + 0.5)); }
    // The width of a line that is one logical pixel thin.
    int Hairline() const { return std::max(1, static_cast<int>(Scale)); }
    bool operator==(const DeviceGrid&) const = default;
};

// The room of a control on the pixels of what it is painted on.
struct DeviceRoom {
    DeviceGrid Grid;
    QSize Pixels;
};

// Makes the painter count in the pixels of its device and tells the room that the control of that logical
// size has there. At odd scales the control begins between two pixels; whole pictures are put on the nearest
// one, and the room is counted from it to the pixel nearest to the end.
inline DeviceRoom CountInDevicePixels(QPainter& painter, const QSize& size) {
    const QTransform device = painter.deviceTransform();
    const double scale = device.m11();
    const int left = static_cast<int>(std::floor(device.dx() + 0.5));
    const int top = static_cast<int>(std::floor(device.dy() + 0.5));
    const int right = static_cast<int>(std::floor(device.dx() + size.width() * scale + 0.5));
    const int bottom = static_cast<int>(std::floor(device.dy() + size.height() * scale + 0.5));
    painter.scale(1 / scale, 1 / scale);
    return {{scale}, QSize(right - left, bottom - top)};
}

}  // namespace Sonmira
