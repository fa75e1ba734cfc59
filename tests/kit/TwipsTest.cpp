#include "kit/Twips.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Sonmira {
namespace {

TEST(Twips, FifteenAreOnePixel) {
    EXPECT_EQ(ToTwips(1), 15);
    EXPECT_EQ(ToTwips(3840), 57600);
    EXPECT_EQ(ToPixels(57600), 3840);
}

TEST(Twips, APixelThereAndBackIsItself) {
    for (int pixel = -5000; pixel <= 5000; ++pixel) EXPECT_EQ(ToPixels(ToTwips(pixel)), pixel);
}

TEST(Twips, TheNearestPixelIsTaken) {
    for (int twips = -40000; twips <= 40000; ++twips)
        EXPECT_EQ(ToPixels(twips), std::round(twips / 15.0)) << twips;
}

TEST(Twips, RectanglesThatTouchInTwipsTouchOnTheScreen) {
    for (int edge = 0; edge < 300; ++edge) {
        const QRect left = ToPixels(QRect(0, 0, edge, 100));
        const QRect right = ToPixels(QRect(edge, 0, 1000 - edge, 100));
        EXPECT_EQ(left.x() + left.width(), right.x()) << edge;
        EXPECT_EQ(right.x() + right.width(), ToPixels(1000)) << edge;
    }
}

}  // namespace
}  // namespace Sonmira
