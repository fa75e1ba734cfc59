#pragma once

#include <chrono>
#include <thread>

namespace Sonmira {

// For what comes at once on a quiet machine and late on a busy one. Only a test that fails waits so long.
inline constexpr std::chrono::milliseconds LongestWait = std::chrono::minutes(2);

// For a look at the clock where only a wait for a program that sleeps much longer would take so much time.
inline constexpr std::chrono::seconds FarLessThanTheSleeper{500};
inline constexpr const char* Sleeper = "1000";  // seconds

// Whether the condition has come to hold. Sleeps meanwhile; no event is handled.
template <class Condition>
bool ComesTrue(const Condition& condition) {
    const auto end = std::chrono::steady_clock::now() + LongestWait;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

}  // namespace Sonmira
