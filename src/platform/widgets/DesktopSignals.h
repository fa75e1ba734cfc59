#pragma once

#include <QString>

#include <functional>

namespace Sonmira {

// What the program tells the desktop around it. Each returns at once and never fails; where nobody listens
// nothing happens. Tests put functions of their own here.
struct DesktopSignals {
    // The progress of the program on its button in the task bar: a part of 1, or none.
    std::function<void(double part)> ShowProgress = [](double) {};
    std::function<void()> HideProgress = [] {};
    // A short message from a program that nobody is looking at. Both texts are plain.
    std::function<void(const QString& title, const QString& text)> Notify = [](const QString&,
                                                                               const QString&) {};
};

// The ones in force; at first they do nothing.
DesktopSignals& Desktop();

// From now on the desktop is told over the session's bus. `program` is the name of the program's desktop
// entry without its ending, which is also the name of its icon.
void InstallDesktopSignals(const QString& program);

}  // namespace Sonmira
