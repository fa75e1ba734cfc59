#pragma once

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Sonmira {

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
