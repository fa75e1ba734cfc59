#include "platform/ChildProcess.h"

#include "platform/Failure.h"
#include "platform/Paths.h"

#include <QStandardPaths>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>
#include <thread>
#include <vector>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr auto BetweenLooks = std::chrono::milliseconds(3);

Failure StartFailure(const QByteArray& name, int error) {
    const QString reason = FromNarrow(std::error_code(error, std::generic_category()).message().c_str());
    return {FailureNumber::Component,
            u"The program %1 cannot be started: %2"_s.arg(FromNarrow(name), reason)};
}

// What the new program begins with: its three descriptors, and none of the signal settings of this one.
class StartSettings {
public:
    StartSettings(int input, int output) {
        posix_spawn_file_actions_init(&Files);
        posix_spawn_file_actions_adddup2(&Files, input, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&Files, output, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&Files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawnattr_init(&Attributes);
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_setsigmask(&Attributes, &none);
        posix_spawnattr_setsigdefault(&Attributes, &all);
        posix_spawnattr_setflags(&Attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~StartSettings() {
        posix_spawn_file_actions_destroy(&Files);
        posix_spawnattr_destroy(&Attributes);
    }
    StartSettings(const StartSettings&) = delete;
    StartSettings& operator=(const StartSettings&) = delete;

    posix_spawn_file_actions_t Files = {};
    posix_spawnattr_t Attributes = {};
};

}  // namespace

bool IsProgramInstalled(const QString& name) {
    return !QStandardPaths::findExecutable(name).isEmpty();
}

ChildProcess::ChildProcess(const QList<QByteArray>& arguments, int output) {
    // A pair of sockets rather than a pipe: writing to a program that has gone is an error here, where with a
    // pipe it is a signal to the whole program.
    int ends[2] = {-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
        throw StartFailure(arguments.first(), errno);
    }
    std::vector<QByteArray> copies(arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(copies.size() + 1);
    for (QByteArray& argument : copies) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const StartSettings settings(ends[1], output);
    const int error = ::posix_spawnp(&Process, pointers[0], &settings.Files, &settings.Attributes,
                                     pointers.data(), environ);
    ::close(ends[1]);
    Input = ends[0];
    if (error != 0) {
        CloseInput();
        throw StartFailure(arguments.first(), error);
    }
}

ChildProcess::~ChildProcess() {
    CloseInput();
    Reap(WNOHANG);
    if (End) return;
    ::kill(Process, SIGKILL);
    Reap(0);
}

std::optional<std::size_t> ChildProcess::Send(std::span<const std::byte> bytes,
                                              std::chrono::milliseconds time) {
    pollfd room = {Input, POLLOUT, 0};
    if (::poll(&room, 1, static_cast<int>(time.count())) <= 0) return 0;
    const ssize_t count = ::send(Input, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno == EAGAIN || errno == EINTR || errno == ENOBUFS) return 0;
    return {};
}

void ChildProcess::CloseInput() {
    if (Input >= 0) ::close(Input);
    Input = -1;
}

std::optional<ProgramEnding> ChildProcess::WaitForEnd(std::chrono::milliseconds time) {
    const auto until = std::chrono::steady_clock::now() + time;
    Reap(WNOHANG);
    while (!End && std::chrono::steady_clock::now() < until) {
        std::this_thread::sleep_for(BetweenLooks);
        Reap(WNOHANG);
    }
    return End;
}

void ChildProcess::Reap(int options) {
    int status = 0;
    while (!End) {
        const pid_t answer = ::waitpid(Process, &status, options);
        if (answer == 0) return;
        if (answer < 0 && errno == EINTR) continue;
        // Where another part of the program took the news of the end, nobody knows how it was.
        End.emplace();
        if (answer < 0) return;
        if (WIFEXITED(status)) End->ExitCode = WEXITSTATUS(status);
        if (WIFSIGNALED(status)) End->Signal = WTERMSIG(status);
    }
}

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
