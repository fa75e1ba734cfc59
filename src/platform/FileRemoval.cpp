#include "platform/FileRemoval.h"

#include "platform/ChildProcess.h"
#include "platform/Failure.h"
#include "platform/FileSearch.h"
#include "platform/NarrowText.h"
#include "platform/NativePath.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
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

// The same file with no link and no ".." in its folder part, which Qt would otherwise take out by the look
// of the text alone.
QByteArray InRealFolder(const QByteArray& native) {
    const qsizetype nameStart = native.lastIndexOf('/') + 1;
    const QByteArray folder = nameStart == 0 ? QByteArray(".") : native.first(nameStart);
    const std::unique_ptr<char, decltype(&free)> real(realpath(folder.constData(), nullptr), &free);
    return real ? QByteArray(real.get()) + '/' + native.sliced(nameStart) : QByteArray();
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

bool MoveToTrash(const QByteArray& native) {
    const QByteArray real = InRealFolder(native);
    if (real.isEmpty()) return false;
    const QString name = FromNarrow(real);
    // Qt would act on another name where this one is no text.
    if (HoldsRawBytes(name) || QFile::encodeName(name) != real) return MoveToTrashByProgram(real);
    return QFile::moveToTrash(name);
}

}  // namespace

void DeleteFileOutright(QStringView path) {
    Unlink(RemovableName(path));
}

void RemoveSourceFile(QStringView path) {
    const QByteArray native = RemovableName(path);
    if (MoveToTrash(native) && !IsThere(native)) return;
    Unlink(native);
}

}  // namespace Sonmira
