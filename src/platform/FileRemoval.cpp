#include "platform/FileRemoval.h"

#include "platform/ChildProcess.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/Paths.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QList>
#include <QScopeGuard>
#include <QStandardPaths>

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <memory>

namespace Sonmira {

namespace {

bool IsThere(const QByteArray& native) {
    struct stat status {};
    return lstat(native.constData(), &status) == 0;
}

[[noreturn]] void FailWith(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
        case ELOOP:
        case ENAMETOOLONG:
            throw Failure(FailureNumber::FileNotFound);
        case EACCES:
        case EPERM:
        case EROFS:
            throw Failure(FailureNumber::PermissionDenied);
        default:
            throw Failure(FailureNumber::PathFileAccess);
    }
}

// The native name of something that may be removed.
QByteArray RemovableName(QStringView path) {
    QByteArray native = ToNative(path);
    if (IsFolder(path)) throw Failure(FailureNumber::PathFileAccess);
    if (!IsThere(native)) FailWith(errno);
    return native;
}

void Unlink(const QByteArray& native) {
    if (unlink(native.constData()) != 0) FailWith(errno);
}

// Whether names can come into that folder and go from it; errno says why not.
bool IsWritable(const QByteArray& folder) {
    return faccessat(AT_FDCWD, folder.constData(), W_OK | X_OK, AT_EACCESS) == 0;
}

}  // namespace

void DeleteFileOutright(QStringView path) {
    Unlink(RemovableName(path));
}

SourceRemoval RemoveSourceFile(QStringView path, WithoutTrash otherwise) {
    const QByteArray native = RemovableName(path);
    const QByteArray folder = native.first(native.lastIndexOf('/') + 1) + '.';
    if (!IsWritable(folder)) FailWith(errno);
    struct stat status {};
    lstat(native.constData(), &status);
    if ((MoveToTrash(native) && !IsThere(native)) || MoveToHomeTrash(native)) {
        return {SourceRemoval::Place::Trash, status.st_size};
    }
    if (otherwise == WithoutTrash::Keep) return {SourceRemoval::Place::Stays, status.st_size};
    Unlink(native);
    return {SourceRemoval::Place::Nowhere, status.st_size};
}

namespace {

// With no link and no ".." in it; empty where nothing is there.
QByteArray RealPath(const QByteArray& native) {
    const std::unique_ptr<char, decltype(&free)> real(realpath(native.constData(), nullptr), &free);
    return {real.get()};
}

// The same file with no link and no ".." in its folder part, which Qt would otherwise take out by the look
// of the text alone.
QByteArray InRealFolder(const QByteArray& native) {
    const qsizetype nameStart = native.lastIndexOf('/') + 1;
    const QByteArray folder = nameStart == 0 ? QByteArray(".") : native.first(nameStart);
    const QByteArray real = RealPath(folder);
    return real.isEmpty() ? QByteArray() : real + '/' + native.sliced(nameStart);
}

// By the desktop's own program, which takes names as bytes.
bool MoveToTrashByProgram(const QByteArray& real) {
    constexpr auto Patience = std::chrono::seconds(10);
    if (!IsProgramInstalled(QStringLiteral("gio"))) return false;
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    bool isGood = false;
    PassOver([&] {
        ChildProcess mover({"gio", "trash", "--", real}, nowhere);
        mover.CloseInput();
        const auto ending = mover.WaitForEnd(Patience);
        isGood = ending && ending->IsGood();
    });
    close(nowhere);
    return isGood;
}

dev_t DeviceOf(const QByteArray& native) {
    struct stat status {};
    return stat(native.constData(), &status) == 0 ? status.st_dev : dev_t{0};
}

// The topmost folder of the volume that a folder, by its real path, lies on.
QByteArray VolumeRootOf(QByteArray folder) {
    const dev_t device = DeviceOf(folder);
    while (folder.size() > 1) {
        const QByteArray above = folder.first(std::max<qsizetype>(folder.lastIndexOf('/'), 1));
        if (DeviceOf(above) != device) break;
        folder = above;
    }
    return folder;
}

QByteArray HomeTrash() {
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    QDir().mkpath(data);
    return QFile::encodeName(data) + "/Trash";
}

// The trash that Qt takes for what lies in that folder, made where it is missing; empty where none can be.
QByteArray TrashFor(const QByteArray& folder) {
    QList<QByteArray> places;
    if (DeviceOf(folder) != DeviceOf(QFile::encodeName(QDir::homePath()))) {
        const QByteArray start = VolumeRootOf(folder) + "/.Trash";
        const QByteArray user = QByteArray::number(getuid());
        places = {start + '/' + user, start + '-' + user};
    }
    places.append(HomeTrash());
    for (const QByteArray& place : places) {
        mkdir(place.constData(), 0700);
        if (IsFolder(FromNative(place))) return place;
    }
    return {};
}

// Whether the two folders of a trash are there, or can be made, and take names.
bool HasFolders(const QByteArray& trash) {
    for (const QByteArray& folder : {trash + "/info", trash + "/files"}) {
        mkdir(folder.constData(), 0700);
        if (!IsWritable(folder)) return false;
    }
    return true;
}

// Qt tries one name after the other, for ever, where the trash lets it make no file that tells where the
// removed one was; and where there is no trash at all, the working folder becomes one.
bool HasUsableTrash(const QByteArray& real) {
    constexpr QByteArrayView LongestTail = "-2147483647.trashinfo";
    // A link is looked up where it leads to, though it is the link that goes.
    const QByteArray target = RealPath(real);
    if (target.isEmpty()) return false;
    const QByteArray trash = TrashFor(target.first(std::max<qsizetype>(target.lastIndexOf('/'), 1)));
    if (trash.isEmpty() || !HasFolders(trash)) return false;
    const QByteArray info = trash + "/info";
    const qsizetype nameLength = real.size() - real.lastIndexOf('/') - 1;
    const long longestName = std::min<long>(NAME_MAX, pathconf(info.constData(), _PC_NAME_MAX));
    return nameLength + LongestTail.size() <= longestName;
}

// A place in the home folder's trash for one file: the note of where it lay, which reserves the name, and the
// file itself.
class TrashPlace {
public:
    // Reserves the first free name for the file, by its real path; without a place where none can be had.
    explicit TrashPlace(const QByteArray& real) {
        constexpr int NamesToTry = 10'000;
        const QByteArray trash = HomeTrash();
        mkdir(trash.constData(), 0700);
        if (!HasFolders(trash)) return;
        // Room for a number and the ending of the note.
        constexpr qsizetype LongestName = NAME_MAX - 24;
        const QByteArray name = real.sliced(real.lastIndexOf('/') + 1).left(LongestName);
        for (int n = 1; n <= NamesToTry; ++n) {
            const QByteArray numbered = n == 1 ? name : name + '.' + QByteArray::number(n);
            Note = trash + "/info/" + numbered + ".trashinfo";
            File = trash + "/files/" + numbered;
            NoteNumber = open(Note.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
            // A file without a note is a leftover of somebody who was interrupted.
            if (NoteNumber >= 0 && IsThere(File)) {
                GiveBack();
                continue;
            }
            if (NoteNumber >= 0 || errno != EEXIST) break;
        }
        if (NoteNumber >= 0 && !WriteAll(NoteNumber, NoteOf(real))) GiveBack();
    }
    ~TrashPlace() {
        if (NoteNumber >= 0) close(NoteNumber);
    }
    TrashPlace(const TrashPlace&) = delete;
    TrashPlace& operator=(const TrashPlace&) = delete;

    bool IsReserved() const { return NoteNumber >= 0; }
    const QByteArray& FileName() const { return File; }
    // Has the note and the names of both reach the disk.
    bool ReachesTheDisk() const {
        const auto sync = [](const QByteArray& path) {
            const QByteArray folder = path.first(path.lastIndexOf('/'));
            const int number = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
            const bool isSynced = number >= 0 && fsync(number) == 0;
            if (number >= 0) close(number);
            return isSynced;
        };
        return fsync(NoteNumber) == 0 && sync(Note) && sync(File);
    }
    void GiveBack() {
        unlink(Note.constData());
        close(std::exchange(NoteNumber, -1));
    }

private:
    static QByteArray NoteOf(const QByteArray& real) {
        return "[Trash Info]\nPath=" + real.toPercentEncoding("/") +
               "\nDeletionDate=" + QDateTime::currentDateTime().toString(Qt::ISODate).toLatin1() + '\n';
    }

    QByteArray Note;
    QByteArray File;
    int NoteNumber = -1;
};

// Copies what is left of one open file to another, and has it reach the disk.
bool CopyWhole(int from, int to) {
    constexpr std::size_t Piece = std::size_t{1} << 24;
    struct stat source {};
    if (fstat(from, &source) != 0) return false;
    off_t left = source.st_size;
    while (left > 0) {
        const ssize_t sent = sendfile(to, from, nullptr, Piece);
        if (sent < 0 && errno == EINTR) continue;
        if (sent <= 0) return false;
        left -= sent;
    }
    const timespec times[2] = {source.st_atim, source.st_mtim};
    futimens(to, times);
    return fsync(to) == 0;
}

}  // namespace

bool MoveToTrash(const QByteArray& native) {
    const QByteArray real = InRealFolder(native);
    if (real.isEmpty()) return false;
    const QString name = FromNarrow(real);
    // Qt would act on another name where this one is no text.
    if (HoldsRawBytes(name) || QFile::encodeName(name) != real) return MoveToTrashByProgram(real);
    return HasUsableTrash(real) && QFile::moveToTrash(name);
}

bool MoveToHomeTrash(const QByteArray& native) {
    const QByteArray real = InRealFolder(native);
    const int from =
        real.isEmpty() ? -1 : open(real.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (from < 0) return false;
    const auto closeSource = qScopeGuard([from] { close(from); });
    struct stat status {};
    if (fstat(from, &status) != 0 || !S_ISREG(status.st_mode)) return false;
    TrashPlace place(real);
    if (!place.IsReserved()) return false;
    if (rename(real.constData(), place.FileName().constData()) == 0) return true;
    const int to = open(place.FileName().constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    const bool isCopied =
        to >= 0 && CopyWhole(from, to) && place.ReachesTheDisk() && unlink(real.constData()) == 0;
    if (to >= 0) close(to);
    if (isCopied) return true;
    if (to >= 0) unlink(place.FileName().constData());
    place.GiveBack();
    return false;
}

}  // namespace Sonmira
