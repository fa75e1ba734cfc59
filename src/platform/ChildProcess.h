#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>

namespace Sonmira {

// Whether a program of that name can be started: an executable file in one of the folders of PATH.
bool IsProgramInstalled(const QString& name);

// How a program ended: with an exit code, or by a signal.
struct ProgramEnding {
    int ExitCode = -1;
    int Signal = 0;
    bool IsGood() const { return ExitCode == 0; }
};

// A program that works beside this one: it gets its input through a pipe and writes its output into an open
// file; what it says to people is dropped. It never outlives the object, and is never left as a zombie. All
// calls come from one thread, and none of them waits longer than it is told to.
class ChildProcess {
public:
    // Starts a program found by PATH. `arguments` are native bytes, the program's name first; nothing of them
    // goes through a shell. `output` is the descriptor that its standard output becomes; it stays the
    // caller's. Fails when the program cannot be started.
    ChildProcess(const QList<QByteArray>& arguments, int output);
    // Ends the program by force where it still runs.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // Gives the program as much of `bytes` as the pipe takes, waiting up to `time` for room. Returns how many
    // bytes that was; none at all, as against 0, when the program reads no more.
    std::optional<std::size_t> Send(std::span<const std::byte> bytes, std::chrono::milliseconds time);
    // Tells the program that its input ends.
    void CloseInput();

    // How the program ended, if it does within that time.
    std::optional<ProgramEnding> WaitForEnd(std::chrono::milliseconds time);

private:
    void Reap(int options);

    int Process = -1;
    int Input = -1;
    std::optional<ProgramEnding> End;
};

// Hands `target`, a path or a web address, to whatever program the desktop has for it, with `folder` as its
// working folder. Returns at once; whether it was handed over is the result, whether the other program
// takes it nobody learns.
bool LaunchWithDesktop(const QString& target, const QString& folder);

// What LaunchWithDesktop does; a test replaces it to see what would be opened.
std::function<bool(const QString& target, const QString& folder)>& DesktopLauncher();

}  // namespace Sonmira
