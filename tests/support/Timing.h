#pragma once

#include <QtGlobal>

#include <chrono>
#include <ctime>

namespace Sonmira {

// Milliseconds say something of the program only where nothing else runs on the machine: tests look at them
// where SONMIRA_TIMING is set. Else they judge by what was done, which is the same on every machine.
inline bool LooksAtMilliseconds() {
    return qEnvironmentVariableIsSet("SONMIRA_TIMING");
}

// The processor time that all threads of this process have used, which other work on the machine leaves as it
// is.
struct CpuClock {
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<CpuClock>;
    static constexpr bool is_steady = true;

    static time_point now() {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return time_point(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
    }
};

}  // namespace Sonmira
