#pragma once

namespace Sonmira {

// Lets the event loop handle what is waiting: clicks, keys, timers, and now and then painting. Work on the
// user-interface thread calls this between its steps. The user is heard at each call, which costs a
// microsecond or two where nothing waits; painting, which costs far more than most steps do, comes some sixty
// times a second. Does nothing without an application.
void YieldToEventLoop();

}  // namespace Sonmira
