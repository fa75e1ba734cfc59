#include "platform/EventLoop.h"

#include <QCoreApplication>

#include <chrono>

namespace Sonmira {

void YieldToEventLoop() {
    using Clock = std::chrono::steady_clock;
    constexpr auto Interval = std::chrono::milliseconds(15);
    static Clock::time_point last;
    const auto now = Clock::now();
    if (now - last < Interval) return;
    QCoreApplication::processEvents();
    last = Clock::now();
}

}  // namespace Sonmira
