#pragma once

#include <QStringList>

namespace Sonmira {

// Fills Dialogs() with real windows, owned by the active window. Call once, after the application object.
void InstallQtDialogs();

// The pairs "description|patterns|" of a filter in the form that Qt's dialog takes, with a last one that
// shows all files. A pattern that differs from one before in case only says nothing new there.
QStringList NameFiltersOf(const QString& filter);

}  // namespace Sonmira
