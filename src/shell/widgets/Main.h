#pragma once

#include <functional>
#include <memory>

class QWidget;

namespace Sonmira {

// The entry routine: finds the settings, shows the logo, makes the main window through `loadMainWindow`
// and shows it. The caller keeps the window and runs the event loop.
std::unique_ptr<QWidget> Main(const std::function<std::unique_ptr<QWidget>()>& loadMainWindow);

}  // namespace Sonmira
