#include "platform/ShellLaunch.h"

#include "platform/NativePath.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

bool IsWebAddress(const QString& target) {
    return target.startsWith(u"https://") || target.startsWith(u"http://");
}

// Only calls that are allowed between fork and exec.
[[noreturn]] void BecomeOpener(const char* target, const char* folder) {
    // A file in place of the folder, or a folder that has gone: the opener starts where we are.
    if (*folder != '\0' && chdir(folder) != 0) errno = 0;
    // What the opener has to say is for nobody: a target that nothing takes is passed over in silence.
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, stream);
    execlp("xdg-open", "xdg-open", target, nullptr);
    execlp("gio", "gio", "open", target, nullptr);
    _exit(1);
}

bool Launch(const QString& target, const QString& folder) {
    const QByteArray what = IsWebAddress(target) ? ToNarrow(target) : ToNative(target);
    const QByteArray where = folder.isEmpty() ? QByteArray() : ToNative(folder);
    if (what.isEmpty()) return false;
    // The child that is waited for ends at once and leaves the opener to the system, so that it becomes no
    // zombie of ours and we never wait for it.
    const pid_t child = fork();
    if (child < 0) return false;
    if (child == 0) {
        setsid();
        const pid_t opener = fork();
        if (opener == 0) BecomeOpener(what.constData(), where.constData());
        _exit(opener < 0 ? 1 : 0);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

bool LaunchWithDesktop(const QString& target, const QString& folder) {
    return DesktopLauncher()(target, folder);
}

std::function<bool(const QString& target, const QString& folder)>& DesktopLauncher() {
    static std::function<bool(const QString&, const QString&)> launcher = Launch;
    return launcher;
}

}  // namespace Sonmira
