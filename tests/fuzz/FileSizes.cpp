#include "FuzzTarget.h"

#include <sys/resource.h>

#include <csignal>

namespace Sonmira {

void LimitFileSizes() {
    constexpr rlim_t Most = 512UL * 1024 * 1024;
    const rlimit limit = {Most, Most};
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, [](int) { std::abort(); });
}

}  // namespace Sonmira
