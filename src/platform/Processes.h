#pragma once

#include <QString>
#include <QStringView>

#include <functional>
#include <vector>

namespace Sonmira {

// The running processes, as far as they are ours to end: those of this user that run this very program.

struct RunningProcess {
    QString Name;  // file name of the executable
    qint64 Id = 0;
};

struct ProcessFunctions {
    // The own process first, then the other instances in the order of their ids.
    std::function<std::vector<RunningProcess>()> List;
    // Ends the process of that id with exit code 0 and returns whether it did. Only the own process is ever
    // ended, so that a stale or foreign id costs nobody anything.
    std::function<bool(qint64 id)> End;
};

// A test replaces the functions to stay alive.
ProcessFunctions& Processes();

// Ends the program at once: no window closes, nothing is saved, no destructor runs.
[[noreturn]] void EndProcessNow(int code);

// Holds a name on this machine until the program ends, so that another program (an installer, say) can see
// that this one runs. Never waits; whether somebody else holds the name already is nobody's concern.
void CreateNamedMutex(QStringView name);

}  // namespace Sonmira
