#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

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

}  // namespace Sonmira
