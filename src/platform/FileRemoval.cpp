#include "platform/FileRemoval.h"

#include "platform/ChildProcess.h"
#include "platform/Failure.h"
#include "platform/FileSearch.h"
#include "platform/NarrowText.h"
#include "platform/NativePath.h"

#include <QDir>
#include <QFile>
#include <QList>
#include <QStandardPaths>

#include <fcntl.h>
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

// The trash that Qt takes for what lies in that folder, made where it is missing; empty where none can be.
QByteArray TrashFor(const QByteArray& folder) {
    QList<QByteArray> places;
    if (DeviceOf(folder) != DeviceOf(QFile::encodeName(QDir::homePath()))) {
        const QByteArray start = VolumeRootOf(folder) + "/.Trash";
        const QByteArray user = QByteArray::number(getuid());
        places = {start + '/' + user, start + '-' + user};
    }
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    QDir().mkpath(data);
    places.append(QFile::encodeName(data) + "/Trash");
    for (const QByteArray& place : places) {
        mkdir(place.constData(), 0700);
        if (IsFolder(FromNative(place))) return place;
    }
    return {};
}

// Qt tries one name after the other, for ever, where the trash lets it make no file that tells where the
// removed one was; and where there is no trash at all, the working folder becomes one.
bool HasUsableTrash(const QByteArray& real) {
    constexpr QByteArrayView LongestTail = "-2147483647.trashinfo";
    // A link is looked up where it leads to, though it is the link that goes.
    const QByteArray target = RealPath(real);
    if (target.isEmpty()) return false;
    const QByteArray trash = TrashFor(target.first(std::max<qsizetype>(target.lastIndexOf('/'), 1)));
    if (trash.isEmpty()) return false;
    const QByteArray info = trash + "/info";
    const QByteArray files = trash + "/files";
    mkdir(info.constData(), 0700);
    mkdir(files.constData(), 0700);
    const qsizetype nameLength = real.size() - real.lastIndexOf('/') - 1;
    const long longestName = std::min<long>(NAME_MAX, pathconf(info.constData(), _PC_NAME_MAX));
    return nameLength + LongestTail.size() <= longestName && IsWritable(info) && IsWritable(files);
}

bool MoveToTrash(const QByteArray& native) {
    const QByteArray real = InRealFolder(native);
    if (real.isEmpty()) return false;
    const QString name = FromNarrow(real);
    // Qt would act on another name where this one is no text.
    if (HoldsRawBytes(name) || QFile::encodeName(name) != real) return MoveToTrashByProgram(real);
    return HasUsableTrash(real) && QFile::moveToTrash(name);
}

}  // namespace

void DeleteFileOutright(QStringView path) {
    Unlink(RemovableName(path));
}

void RemoveSourceFile(QStringView path) {
    const QByteArray native = RemovableName(path);
    const QByteArray folder = native.first(native.lastIndexOf('/') + 1) + '.';
    if (!IsWritable(folder)) FailWith(errno);
    if (MoveToTrash(native) && !IsThere(native)) return;
    Unlink(native);
}

}  // namespace Sonmira
