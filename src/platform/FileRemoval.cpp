#include "platform/FileRemoval.h"

#include "platform/Failure.h"
#include "platform/FileSearch.h"
#include "platform/NativePath.h"
#include "platform/Trash.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

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

}  // namespace Sonmira
