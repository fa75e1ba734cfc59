#pragma once

#include <cstdint>
#include <functional>

namespace Sonmira {

// Percent times 1000: 0 at the start, 100000 at the end of work that was not stopped. Called some forty times
// a second on the thread that began the work; must not throw.
using ApeProgressCallback = std::function<void(std::int32_t)>;

}  // namespace Sonmira
