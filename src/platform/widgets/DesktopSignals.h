#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class QDropEvent;

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

// Takes a drag that carries files, and no other. Nothing is ever moved away from where it comes.
void AcceptFiles(QDropEvent& drag);

// Takes a drop and gives the inner paths of its files, in their order; what is no local file is left out.
QStringList DroppedPaths(QDropEvent& drop);

}  // namespace Sonmira
