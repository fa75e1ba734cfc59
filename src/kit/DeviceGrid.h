#pragma once

#include <QPainter>

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

// Where a control lies on the pixels of what it is painted on.
struct DevicePlace {
    DeviceGrid Grid;
    QRect Pixels;
};

// Makes the painter count in the pixels of its device, from the device's origin, and tells where the control
// of that logical size lies there.
inline DevicePlace CountInDevicePixels(QPainter& painter, const QSize& size) {
    const QTransform device = painter.deviceTransform();
    const double scale = device.m11();
    const int left = static_cast<int>(std::floor(device.dx() + 0.5));
    const int top = static_cast<int>(std::floor(device.dy() + 0.5));
    const int right = static_cast<int>(std::floor(device.dx() + size.width() * scale + 0.5));
    const int bottom = static_cast<int>(std::floor(device.dy() + size.height() * scale + 0.5));
    painter.scale(1 / scale, 1 / scale);
    // The device's own offset is no whole pixel at odd scales.
    painter.translate(left - device.dx(), top - device.dy());
    return {{scale}, QRect(0, 0, right - left, bottom - top)};
}

}  // namespace Sonmira
