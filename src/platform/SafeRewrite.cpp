#include "platform/SafeRewrite.h"

#include "platform/Failure.h"
#include "platform/Handles.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string_view>
#include <utility>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr const char* NamePattern = ".sonmira-XXXXXX";
constexpr int LettersChosen = 6;

// Whoever writes a copy holds a lock on it, which ends with the program.
bool Lock(int file) {
    return flock(file, LOCK_EX | LOCK_NB) == 0;
}

bool IsCopyName(const QByteArray& name) {
    const QByteArray pattern(NamePattern);
    return name.size() == pattern.size() && name.startsWith(pattern.chopped(LettersChosen)) &&
           std::all_of(name.end() - LettersChosen, name.end(),
                       [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; });
}

QByteArray RandomName() {
    constexpr std::string_view Letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    std::random_device random;
    std::uniform_int_distribution<std::size_t> place(0, Letters.size() - 1);
    QByteArray name = QByteArray(NamePattern).chopped(LettersChosen);
    for (int n = 0; n < LettersChosen; ++n) name += Letters[place(random)];
    return name;
}

Descriptor OpenToLock(const QByteArray& file) {
    constexpr int Manner = O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW;
    // Over a network only who may write may lock.
    Descriptor writing(open(file.constData(), O_RDWR | Manner));
    return writing.IsOpen() ? std::move(writing) : Descriptor(open(file.constData(), O_RDONLY | Manner));
}

}  // namespace

TemporaryCopy::TemporaryCopy(QByteArray folder, CopyName name) : Folder(std::move(folder)) {
    if (name == CopyName::Always || !MakeUnnamed()) MakeNamed();
}

TemporaryCopy::~TemporaryCopy() {
    if (!Name.isEmpty()) unlink(Name.constData());
}

bool TemporaryCopy::MakeUnnamed() {
    Handle = Descriptor(open(Folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
    // It is opened again by its number, for which the system's own folder has to be there.
    if (Handle.IsOpen() && access(Path().constData(), R_OK | W_OK) != 0) Handle = Descriptor();
    if (Handle.IsOpen()) Lock(Handle.Number());
    return Handle.IsOpen();
}

void TemporaryCopy::MakeNamed() {
    constexpr int MostTries = 100;
    for (int n = 0; n < MostTries; ++n) {
        QByteArray name = Folder + NamePattern;
        Descriptor made(mkostemp(name.data(), O_CLOEXEC));
        if (!made.IsOpen()) throw WritingFailure(errno);
        Lock(made.Number());
        // Another program may have taken it for a dead one before it was locked.
        struct stat status {};
        if (fstat(made.Number(), &status) != 0 || status.st_nlink == 0) continue;
        Name = name;
        Handle = std::move(made);
        return;
    }
    throw WritingFailure(EEXIST);
}

QByteArray TemporaryCopy::Path() const {
    return Name.isEmpty() ? "/proc/self/fd/" + QByteArray::number(Handle.Number()) : Name;
}

void TemporaryCopy::FillFrom(int source, qint64 size) {
    for (qint64 left = size; left > 0;) {
        const ssize_t copied = sendfile(Handle.Number(), source, nullptr, static_cast<std::size_t>(left));
        if (copied < 0 && errno == EINTR) continue;
        if (copied < 0) throw WritingFailure(errno);
        if (copied == 0) break;  // the file has become shorter meanwhile
        left -= copied;
    }
}

void TemporaryCopy::CopyAttributes(int source, const struct stat& status) const {
    // Only the system's administrator may give a file away; everybody else keeps what he makes, in the
    // group that it had.
    if (fchown(Handle.Number(), status.st_uid, status.st_gid) != 0) {
        [[maybe_unused]] const int shared = fchown(Handle.Number(), uid_t(-1), status.st_gid);
    }
    // What the folder gave the copy of its own is nothing that the file had.
    fremovexattr(Handle.Number(), "system.posix_acl_access");
    fchmod(Handle.Number(), status.st_mode & 07777);
    QByteArray names(std::max<ssize_t>(flistxattr(source, nullptr, 0), 0), '\0');
    const ssize_t size = flistxattr(source, names.data(), static_cast<std::size_t>(names.size()));
    for (qsizetype at = 0; at < size; at += static_cast<qsizetype>(strlen(names.constData() + at)) + 1) {
        QByteArray value(65536, '\0');
        const char* const name = names.constData() + at;
        const ssize_t length = fgetxattr(source, name, value.data(), static_cast<std::size_t>(value.size()));
        if (length >= 0) {
            fsetxattr(Handle.Number(), name, value.constData(), static_cast<std::size_t>(length), 0);
        }
    }
}

void TemporaryCopy::SyncToDisk() const {
    if (fsync(Handle.Number()) != 0) throw WritingFailure(errno);
}

// A link cannot replace a file, but only take a name that is free.
bool TemporaryCopy::TakeName() {
    constexpr int MostTries = 100;
    for (int n = 0; n < MostTries; ++n) {
        const QByteArray name = Folder + RandomName();
        if (linkat(AT_FDCWD, Path().constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) == 0) {
            Name = name;
            return true;
        }
        if (errno != EEXIST) return false;
    }
    return false;
}

bool TemporaryCopy::Replace(const QByteArray& file) {
    if (Name.isEmpty() && !TakeName()) return false;
    if (rename(Name.constData(), file.constData()) != 0) throw WritingFailure(errno);
    Name.clear();
    return true;
}

void RemoveDeadCopies(const QByteArray& folder) {
    const CHandle<DIR, closedir> names(opendir(folder.constData()));
    if (!names) return;
    while (const dirent* const entry = readdir(names.get())) {
        if (!IsCopyName(entry->d_name)) continue;
        const QByteArray file = folder + entry->d_name;
        const Descriptor copy = OpenToLock(file);
        struct stat status {};
        const bool isOurs = copy.IsOpen() && fstat(copy.Number(), &status) == 0 && S_ISREG(status.st_mode) &&
                            status.st_uid == geteuid();
        if (isOurs && Lock(copy.Number())) unlink(file.constData());
    }
}

namespace {

// Where the file itself lies, behind any links.
QByteArray RealPath(const QByteArray& file) {
    const CHandle<char, std::free> real(realpath(file.constData(), nullptr));
    if (!real) throw ReadingFailure(errno);
    return {real.get()};
}

bool IsStill(const QByteArray& file, const struct stat& before) {
    struct stat now {};
    return stat(file.constData(), &now) == 0 && now.st_dev == before.st_dev && now.st_ino == before.st_ino &&
           now.st_size == before.st_size && now.st_mtim.tv_sec == before.st_mtim.tv_sec &&
           now.st_mtim.tv_nsec == before.st_mtim.tv_nsec;
}

}  // namespace

void RewriteThroughCopy(const QByteArray& file, const std::function<void(const QByteArray& copy)>& change,
                        CopyName name) {
    const QByteArray real = RealPath(file);
    // A rename needs no right to write the file itself, so that right is asked for here.
    const Descriptor source(open(real.constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
    if (!source.IsOpen()) throw WritingFailure(errno);
    struct stat status {};
    if (fstat(source.Number(), &status) != 0) throw ReadingFailure(errno);
    const QByteArray folder = real.left(real.lastIndexOf('/') + 1);
    RemoveDeadCopies(folder);
    TemporaryCopy copy(folder, name);
    copy.FillFrom(source.Number(), status.st_size);
    change(copy.Path());
    copy.CopyAttributes(source.Number(), status);
    copy.SyncToDisk();
    // As late as can be, and by name: others replace files as we do.
    if (!IsStill(real, status))
        throw Failure(FailureNumber::PermissionDenied, u"Another program changes the file"_s);
    if (!copy.Replace(real)) RewriteThroughCopy(file, change, CopyName::Always);
}

}  // namespace Sonmira
