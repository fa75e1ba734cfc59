#include "platform/Processes.h"

#include "platform/Paths.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <filesystem>

namespace Sonmira {

namespace {

namespace fs = std::filesystem;

// The executable of a process, as its own file and not by name: empty for processes that are none of ours.
std::optional<struct stat> ProgramOf(const fs::path& process) {
    struct stat status {};
    if (stat((process / "exe").c_str(), &status) != 0) return std::nullopt;
    return status;
}

bool BelongsToThisUser(const fs::path& process) {
    struct stat status {};
    return stat(process.c_str(), &status) == 0 && status.st_uid == geteuid();
}

QString ProgramName(const fs::path& process) {
    std::error_code error;
    const fs::path program = fs::read_symlink(process / "exe", error);
    return FromNarrow(program.filename().string());
}

qint64 IdOf(const fs::path& process) {
    const std::string name = process.filename().string();
    const bool isNumber = !name.empty() && std::all_of(name.begin(), name.end(), [](char digit) {
        return digit >= '0' && digit <= '9';
    });
    return isNumber ? std::strtoll(name.c_str(), nullptr, 10) : 0;
}

std::vector<RunningProcess> ListInstances() {
    const auto own = ProgramOf("/proc/self");
    std::vector<RunningProcess> others;
    std::error_code error;
    for (fs::directory_iterator it("/proc", error), end; !error && it != end; it.increment(error)) {
        const qint64 id = IdOf(it->path());
        if (id == 0 || id == getpid() || !own || !BelongsToThisUser(it->path())) continue;
        const auto program = ProgramOf(it->path());
        if (!program || program->st_dev != own->st_dev || program->st_ino != own->st_ino) continue;
        others.push_back({ProgramName(it->path()), id});
    }
    std::sort(others.begin(), others.end(), [](const auto& a, const auto& b) { return a.Id < b.Id; });
    others.insert(others.begin(), {ProgramName("/proc/self"), getpid()});
    return others;
}

bool EndIfOwn(qint64 id) {
    if (id == getpid()) EndProcessNow(0);
    return false;
}

}  // namespace

ProcessFunctions& Processes() {
    static ProcessFunctions functions{ListInstances, EndIfOwn};
    return functions;
}

void EndProcessNow(int code) {
    _exit(code);
}

void CreateNamedMutex(QStringView name) {
    const QByteArray bytes = ToNarrow(name);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    // A zero byte in front makes the name abstract: it lives in no folder and goes with the process.
    const std::size_t length = std::min(static_cast<std::size_t>(bytes.size()), sizeof address.sun_path - 1);
    std::memcpy(address.sun_path + 1, bytes.constData(), length);
    const int holder = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (holder < 0) return;
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
    // The socket of a name that was free stays open on purpose: the end of the process closes it.
    if (bind(holder, reinterpret_cast<const sockaddr*>(&address), size) != 0) close(holder);
}

}  // namespace Sonmira
