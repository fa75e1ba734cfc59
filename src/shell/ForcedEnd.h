#pragma once

#include <QString>

namespace Sonmira {

// The end of the program on every normal close: the first running process whose name contains `name`, case
// aside, is ended. With several instances that is the first of the list, which the system gives with the
// own process in front. The routine has room for 100 processes; a longer list fails with SubscriptOutOfRange.
// Does not return when the own process was the one; otherwise the result is empty at all times.
QString KillProcessByName(const QString& name);

// Ends the process of that id and returns whether it did; false for 0. A failure is passed over.
bool KillProcessById(qint64 processId);

}  // namespace Sonmira
