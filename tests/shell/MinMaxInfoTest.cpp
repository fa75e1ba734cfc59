#include "shell/widgets/WindowMeasures.h"

#include <QApplication>
#include <QScreen>
#include <QWidget>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

TEST(MinMaxInfo, HoldsAWindowBetweenItsLeastSizeAndTheScreen) {
    QWidget window;
    HookMinMaxInfo(window, 3000, 1500);
    window.resize(10, 10);
    EXPECT_EQ(window.size(), QSize(200, 100));
    window.resize(99999, 99999);
    EXPECT_EQ(window.size(), QApplication::primaryScreen()->size());
}

TEST(MinMaxInfo, RoundsTwipsToPixels) {
    QWidget window;
    HookMinMaxInfo(window, 3008, 1507);
    EXPECT_EQ(window.minimumSize(), QSize(201, 100));
}

TEST(MinMaxInfo, TheLeastSizeHoldsOnASmallerScreen) {
    QWidget window;
    HookMinMaxInfo(window, 99000, 99000);
    window.resize(100, 100);
    EXPECT_EQ(window.size(), QSize(6600, 6600));
}

TEST(MinMaxInfo, UnhookedAWindowTakesAnySize) {
    QWidget window;
    HookMinMaxInfo(window, 3000, 1500);
    UnhookMinMaxInfo(window);
    window.resize(10, 10);
    EXPECT_EQ(window.size(), QSize(10, 10));
}

}  // namespace
}  // namespace Sonmira
