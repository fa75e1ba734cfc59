#pragma once

#include <functional>
#include <memory>

class QWidget;

namespace Sonmira {

// The entry routine: finds the settings, shows the logo, tells the user where the MP3 encoder is missing,
// makes the main window through `loadMainWindow` and shows it. The caller keeps the window and runs the event
// loop. A failure on the way is reported and ends the program; where a test keeps that from happening the
// result is null.
std::unique_ptr<QWidget> Main(const std::function<std::unique_ptr<QWidget>()>& loadMainWindow);

}  // namespace Sonmira
