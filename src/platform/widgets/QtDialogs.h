#pragma once

namespace Sonmira {

// Fills Dialogs() with real windows, owned by the active window. Call once, after the application object.
void InstallQtDialogs();

}  // namespace Sonmira
