#include "platform/SafeRewrite.h"

#include "platform/CHandle.h"
#include "platform/Descriptor.h"
#include "platform/Failure.h"
#include "platform/FileFailure.h"
#include "platform/TemporaryCopy.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdlib>

namespace Sonmira {

using namespace Qt::StringLiterals;

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
    copy.TakeManners(source.Number(), status);
    copy.Settle();
    // As late as can be, and by name: others replace files as we do.
    if (!IsStill(real, status))
        throw Failure(FailureNumber::PermissionDenied, u"Another program changes the file"_s);
    if (!copy.Replace(real)) RewriteThroughCopy(file, change, CopyName::Always);
}

}  // namespace Sonmira
