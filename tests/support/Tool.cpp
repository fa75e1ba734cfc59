#include "support/Tool.h"

#include "support/TestFolder.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vector>

namespace Sonmira {

ToolResult RunTool(const QList<QByteArray>& arguments) {
    // Files rather than pipes: a program that writes much to both never waits for us.
    const TestFolder folder;
    const QByteArray output = folder.Native("output");
    const QByteArray errors = folder.Native("errors");
    const int flags = O_WRONLY | O_CREAT | O_TRUNC;

    std::vector<QByteArray> copies(arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(copies.size() + 1);
    for (QByteArray& argument : copies) pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.constData(), flags, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.constData(), flags, 0600);
    pid_t process = 0;
    const int code = posix_spawnp(&process, pointers[0], &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);

    ToolResult result;
    int status = 0;
    if (code == 0 && waitpid(process, &status, 0) == process && WIFEXITED(status)) {
        result.ExitCode = WEXITSTATUS(status);
    }
    result.Output = ContentOf(output);
    result.Errors = ContentOf(errors);
    return result;
}

}  // namespace Sonmira
