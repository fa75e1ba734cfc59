#pragma once

#include <QString>

#include <functional>

namespace Sonmira {

// Hands `target`, a path or a web address, to whatever program the desktop has for it, with `folder` as its
// working folder. Returns at once; whether it was handed over is the result, whether the other program
// takes it nobody learns.
bool LaunchWithDesktop(const QString& target, const QString& folder);

// What LaunchWithDesktop does; a test replaces it to see what would be opened.
std::function<bool(const QString& target, const QString& folder)>& DesktopLauncher();

}  // namespace Sonmira
