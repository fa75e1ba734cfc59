#pragma once

namespace Sonmira {

// Lets the event loop handle what is waiting: painting, clicks, timers. Work on the user-interface
// thread calls this between its steps; calls closer together than a few milliseconds cost nothing, and
// the interface still hears the user some sixty times a second. Does nothing without an application.
void YieldToEventLoop();

}  // namespace Sonmira
