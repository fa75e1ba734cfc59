#pragma once

namespace Sonmira {

// Ends the program at once: no window closes, nothing is saved, no destructor runs.
[[noreturn]] void EndProcessNow(int code);

}  // namespace Sonmira
