#include "platform/EventLoop.h"

#include <QCoreApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace Sonmira {
namespace {

TEST(EventLoop, LetsWaitingEventsThrough) {
    bool isHandled = false;
    QTimer::singleShot(0, [&] { isHandled = true; });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    YieldToEventLoop();
    EXPECT_TRUE(isHandled);
}

TEST(EventLoop, CallsCloseTogetherHandleNothing) {
    YieldToEventLoop();
    YieldToEventLoop();
    int handled = 0;
    QTimer timer;
    timer.callOnTimeout([&] { ++handled; });
    timer.start(0);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(100);
    int calls = 0;
    for (; std::chrono::steady_clock::now() < end; ++calls) YieldToEventLoop();
    EXPECT_GT(calls, 100);
    EXPECT_LE(handled, 8);
    EXPECT_GE(handled, 1);
}

}  // namespace
}  // namespace Sonmira
