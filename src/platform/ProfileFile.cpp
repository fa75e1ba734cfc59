#include "platform/ProfileFile.h"

#include "platform/FileBytes.h"
#include "platform/NarrowText.h"
#include "platform/NativePath.h"
#include "platform/ProfileText.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <climits>
#include <thread>

namespace Sonmira {

namespace {

// Another instance holds the lock for one short write. One that was stopped in the middle must not stop
// this one as well.
constexpr auto LongestWait = std::chrono::seconds(10);

// An open folder, which is closed and thereby unlocked at the end.
class FolderHandle {
public:
    explicit FolderHandle(const QByteArray& native)
        : Descriptor(open(native.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}
    ~FolderHandle() {
        if (Descriptor >= 0) close(Descriptor);
    }
    FolderHandle(const FolderHandle&) = delete;
    FolderHandle& operator=(const FolderHandle&) = delete;

    // The folder itself carries the lock, so that no lock file is left lying about. True also where the
    // file system knows no locks.
    bool Lock() const {
        if (Descriptor < 0) return false;
        const auto end = std::chrono::steady_clock::now() + LongestWait;
        while (flock(Descriptor, LOCK_EX | LOCK_NB) != 0) {
            if (errno == EINTR) continue;
            if (errno != EWOULDBLOCK) return true;
            if (std::chrono::steady_clock::now() > end) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    }

    const int Descriptor;
};

QByteArray FolderPart(const QByteArray& native) {
    const qsizetype separator = native.lastIndexOf('/');
    if (separator < 0) return ".";
    return native.first(std::max<qsizetype>(separator, 1));
}

// The file that a chain of links ends at, there or not.
QByteArray BehindLinks(QByteArray native) {
    constexpr int LongestChain = 40;
    for (int i = 0; i < LongestChain; ++i) {
        QByteArray target(PATH_MAX, '\0');
        const ssize_t size = readlink(native.constData(), target.data(), static_cast<size_t>(target.size()));
        if (size <= 0) return native;
        target.truncate(size);
        native = target.startsWith('/') ? target : FolderPart(native) + '/' + target;
    }
    return {};
}

// Puts `content` in the place of `name` by way of a temporary file, so that neither a crash nor a full
// disk leaves half a file.
bool Replace(int folder, const QByteArray& name, const QByteArray& content, std::optional<mode_t> mode) {
    static std::atomic<unsigned> count = 0;
    const QByteArray temporary =
        ".sonmira-" + QByteArray::number(getpid()) + '-' + QByteArray::number(count++) + ".tmp";
    const int file =
        openat(folder, temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (file < 0) return false;
    bool isWritten = !mode || fchmod(file, *mode) == 0;
    isWritten = isWritten && WriteAll(file, content);
    isWritten = close(file) == 0 && isWritten;
    isWritten = isWritten && renameat(folder, temporary.constData(), folder, name.constData()) == 0;
    if (!isWritten) unlinkat(folder, temporary.constData(), 0);
    return isWritten;
}

// Half a pair would go out as another character (a high half) or as a byte (a low one), and what is read here
// is mostly the path of a folder, which then were another one's.
QString CutToLongest(QString value) {
    if (value.size() <= LongestProfileValue) return value;
    const bool isPair =
        value[LongestProfileValue - 1].isHighSurrogate() && value[LongestProfileValue].isLowSurrogate();
    value.truncate(isPair ? LongestProfileValue - 1 : LongestProfileValue);
    return value;
}

}  // namespace

QString ReadProfileValue(QStringView file, QStringView section, QStringView key) {
    const auto content = ReadFileBytes(ToNative(file));
    if (!content) return {};
    const auto value = ProfileText(*content).Value(section, key);
    return value ? CutToLongest(FromNarrow(*value)) : QString();
}

bool WriteProfileValue(QStringView file, QStringView section, QStringView key, QStringView value) {
    const QByteArray native = BehindLinks(ToNative(file));
    const QByteArray name = native.sliced(native.lastIndexOf('/') + 1);
    if (name.isEmpty()) return false;
    const FolderHandle folder(FolderPart(native));
    if (!folder.Lock()) return false;

    const auto content = ReadFileBytes(native);
    if (!content && errno != ENOENT) return false;
    std::optional<mode_t> mode;
    if (content) {
        // A rename would get past a file's own write protection.
        if (faccessat(folder.Descriptor, name.constData(), W_OK, AT_EACCESS) != 0) return false;
        struct stat status {};
        if (fstatat(folder.Descriptor, name.constData(), &status, 0) != 0) return false;
        mode = status.st_mode & 07777U;
    }
    ProfileText text(content.value_or(QByteArray()));
    return text.SetValue(section, key, ToNarrow(value)) &&
           Replace(folder.Descriptor, name, text.Content(), mode);
}

}  // namespace Sonmira
