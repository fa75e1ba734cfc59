#include "platform/Clock.h"

#include <QDate>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

TEST(Clock, TellsTheYearOfTheCalendar) {
    const int before = QDate::currentDate().year();
    const int told = CurrentYear();
    EXPECT_GE(told, before);
    EXPECT_LE(told, QDate::currentDate().year());
}

TEST(Clock, CanBeStopped) {
    OverrideCurrentYear(1999);
    EXPECT_EQ(CurrentYear(), 1999);
    OverrideCurrentYear(0);
    EXPECT_NE(CurrentYear(), 1999);
}

}  // namespace
}  // namespace Sonmira
