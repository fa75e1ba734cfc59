#include "platform/TemporaryFolder.h"

#include "platform/Paths.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>

namespace Sonmira {

namespace {

// The routines take a path into a text of 100 characters, the closing one among them.
constexpr qsizetype LongestPath = 99;
// More names than that are taken by somebody who means it.
constexpr int MostNames = 100;

using OpenFolder = std::unique_ptr<DIR, int (*)(DIR*)>;

bool IsInMemory(const char* place) {
    constexpr auto MemoryFileSystem = 0x01021994;
    struct statfs status {};
    return statfs(place, &status) == 0 && status.f_type == MemoryFileSystem;
}

// The name of the n-th try, counted from 1.
QByteArray NumberedName(const QByteArray& name, int n) {
    return n == 1 ? name : name + '-' + QByteArray::number(n);
}

// Opens a folder, but not through a link.
int OpenFolderAt(int above, const QByteArray& name) {
    return openat(above, name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

// Whether the open folder is the user's own and nobody else may come in.
bool IsOfThisUserAlone(int folder) {
    struct stat status {};
    if (fstat(folder, &status) != 0 || status.st_uid != geteuid()) return false;
    return (status.st_mode & 0777U) == 0700 || fchmod(folder, 0700) == 0;
}

bool IsSameFolder(int folder, const QByteArray& path) {
    struct stat open {};
    struct stat named {};
    return fstat(folder, &open) == 0 && lstat(path.constData(), &named) == 0 && open.st_dev == named.st_dev &&
           open.st_ino == named.st_ino;
}

// The user's folder in that place; empty where none can be had.
QByteArray UsersFolderIn(const QByteArray& place) {
    const QByteArray name = place + "/sonmira-" + QByteArray::number(geteuid());
    for (int n = 1; n <= MostNames; ++n) {
        QByteArray path = NumberedName(name, n);
        if (mkdir(path.constData(), 0700) != 0 && errno != EEXIST) return {};
        const int folder = OpenFolderAt(AT_FDCWD, path);
        const bool isOurs = folder >= 0 && IsOfThisUserAlone(folder);
        if (folder >= 0) close(folder);
        if (isOurs) return path;
    }
    return {};
}

// Moves the files out of the folder of a process that has ended, and takes the empty folder away.
void MoveUp(int usersFolder, const QByteArray& name) {
    const int folder = OpenFolderAt(usersFolder, name);
    if (folder < 0) return;
    if (flock(folder, LOCK_EX | LOCK_NB) != 0) {
        close(folder);
        return;
    }
    const OpenFolder entries(fdopendir(dup(folder)), &closedir);
    while (const dirent* entry = entries ? readdir(entries.get()) : nullptr) {
        const QByteArray file(entry->d_name);
        if (file != "." && file != "..") renameat(folder, entry->d_name, usersFolder, entry->d_name);
    }
    unlinkat(usersFolder, name.constData(), AT_REMOVEDIR);
    close(folder);
}

void MoveUpLeftovers(const QByteArray& usersFolder) {
    const OpenFolder entries(opendir(usersFolder.constData()), &closedir);
    if (!entries) return;
    QList<QByteArray> processes;
    while (const dirent* entry = readdir(entries.get())) {
        if (entry->d_name[0] >= '1' && entry->d_name[0] <= '9') processes.append(entry->d_name);
    }
    for (const QByteArray& name : processes) MoveUp(dirfd(entries.get()), name);
}

std::optional<QString> overridden;
std::optional<ProcessFolder> own;
pid_t owner = 0;  // a process that was forked off has none yet

}  // namespace

ProcessFolder::ProcessFolder(ProcessFolder&& other) noexcept
    : Path(std::move(other.Path)), Lock(std::exchange(other.Lock, -1)) {}

ProcessFolder& ProcessFolder::operator=(ProcessFolder&& other) noexcept {
    std::swap(Path, other.Path);
    std::swap(Lock, other.Lock);
    return *this;
}

ProcessFolder::~ProcessFolder() {
    if (Lock >= 0) close(Lock);
}

bool ProcessFolder::IsThere() const {
    return IsSameFolder(Lock, Path);
}

std::optional<ProcessFolder> ProcessFolder::ClaimIn(const QByteArray& usersFolder) {
    const QByteArray name = usersFolder + '/' + QByteArray::number(getpid());
    for (int n = 1; n <= MostNames; ++n) {
        QByteArray path = NumberedName(name, n);
        if (path.size() > LongestPath) return std::nullopt;
        if (mkdir(path.constData(), 0700) != 0) {
            if (errno == EEXIST) continue;
            return std::nullopt;
        }
        ProcessFolder folder(path, OpenFolderAt(AT_FDCWD, path));
        if (folder.Lock < 0) continue;
        const bool isLocked = flock(folder.Lock, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
        // Another process that starts just now may have taken the empty folder for one that was left.
        if (isLocked && folder.IsThere()) return folder;
    }
    return std::nullopt;
}

std::optional<ProcessFolder> ProcessFolder::Claim(const QList<QByteArray>& places) {
    for (const QByteArray& place : places) {
        const QByteArray users = UsersFolderIn(place);
        if (users.isEmpty()) continue;
        MoveUpLeftovers(users);
        if (auto folder = ClaimIn(users)) return folder;
    }
    return std::nullopt;
}

QList<QByteArray> TemporaryPlaces() {
    QList<QByteArray> places = {"/tmp", "/var/tmp"};
    if (IsInMemory("/tmp")) std::swap(places[0], places[1]);
    QByteArray configured(getenv("TMPDIR"));
    while (configured.size() > 1 && configured.endsWith('/')) configured.chop(1);
    if (configured.startsWith('/')) places.prepend(configured);
    return places;
}

QString TemporaryFolder() {
    if (overridden) return *overridden;
    if (owner != getpid() || !own || !own->IsThere()) own = ProcessFolder::Claim(TemporaryPlaces());
    owner = getpid();
    return own ? FromNative(own->Native()) : QString();
}

void OverrideTemporaryFolder(std::optional<QString> folder) {
    overridden = std::move(folder);
}

}  // namespace Sonmira
