#pragma once

#include <QByteArray>
#include <QList>

namespace Sonmira {

struct ToolResult {
    int ExitCode = -1;  // -1 when it could not be started or was ended by a signal
    QByteArray Output;
    QByteArray Errors;
};

// Runs an installed program, found by PATH, and waits for it. Arguments are native bytes, the program's name
// first; nothing of them goes through a shell. Its input is empty.
ToolResult RunTool(const QList<QByteArray>& arguments);

}  // namespace Sonmira
