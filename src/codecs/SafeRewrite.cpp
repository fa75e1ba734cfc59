#include "codecs/SafeRewrite.h"

#include "codecs/CHandle.h"
#include "codecs/Descriptor.h"
#include "codecs/FileFailure.h"
#include "platform/Failure.h"

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

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

// The copy, which is removed unless it has taken the file's place.
class TemporaryCopy {
public:
    explicit TemporaryCopy(const QByteArray& file)
        : Name(file.left(file.lastIndexOf('/') + 1) + ".sonmira-XXXXXX"),
          Handle(mkostemp(Name.data(), O_CLOEXEC)) {
        if (!Handle.IsOpen()) throw WritingFailure(errno);
    }
    ~TemporaryCopy() {
        if (!Name.isEmpty()) unlink(Name.constData());
    }
    TemporaryCopy(const TemporaryCopy&) = delete;
    TemporaryCopy& operator=(const TemporaryCopy&) = delete;

    const QByteArray& Path() const { return Name; }

    void FillFrom(int source, qint64 size) {
        for (qint64 left = size; left > 0;) {
            const ssize_t copied = sendfile(Handle.Number(), source, nullptr, static_cast<std::size_t>(left));
            if (copied < 0 && errno == EINTR) continue;
            if (copied < 0) throw WritingFailure(errno);
            if (copied == 0) break;  // the file has become shorter meanwhile
            left -= copied;
        }
    }

    void TakeManners(int source, const struct stat& status) const {
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
            const ssize_t length =
                fgetxattr(source, name, value.data(), static_cast<std::size_t>(value.size()));
            if (length >= 0) {
                fsetxattr(Handle.Number(), name, value.constData(), static_cast<std::size_t>(length), 0);
            }
        }
    }

    // What was written by name is on the disk before the name changes hands.
    void Settle() const {
        if (fsync(Handle.Number()) != 0) throw WritingFailure(errno);
    }
    void Replace(const QByteArray& file) {
        if (rename(Name.constData(), file.constData()) != 0) throw WritingFailure(errno);
        Name.clear();
    }

private:
    QByteArray Name;
    Descriptor Handle;
};

}  // namespace

void RewriteThroughCopy(const QByteArray& file, const std::function<void(const QByteArray& copy)>& change) {
    const QByteArray real = RealPath(file);
    // A rename needs no right to write the file itself, so that right is asked for here.
    const Descriptor source(open(real.constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
    if (!source.IsOpen()) throw WritingFailure(errno);
    struct stat status {};
    if (fstat(source.Number(), &status) != 0) throw ReadingFailure(errno);
    TemporaryCopy copy(real);
    copy.FillFrom(source.Number(), status.st_size);
    change(copy.Path());
    copy.TakeManners(source.Number(), status);
    copy.Settle();
    // As late as can be, and by name: others replace files as we do.
    if (!IsStill(real, status))
        throw Failure(FailureNumber::PermissionDenied, u"Another program changes the file"_s);
    copy.Replace(real);
}

}  // namespace Sonmira
