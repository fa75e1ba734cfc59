#include "platform/FileBytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace Sonmira {

namespace {

std::optional<QByteArray> ReadOpenFile(int file) {
    struct stat status {};
    if (fstat(file, &status) != 0) return {};
    if (!S_ISREG(status.st_mode) || status.st_size > LargestTextFile) {
        errno = S_ISDIR(status.st_mode) ? EISDIR : EFBIG;
        return {};
    }
    QByteArray content;
    char buffer[16 * 1024];
    while (true) {
        const ssize_t count = read(file, buffer, sizeof buffer);
        if (count == 0) return content;
        if (count > 0) {
            content.append(buffer, count);
        } else if (errno != EINTR) {
            return {};
        }
    }
}

}  // namespace

std::optional<QByteArray> ReadFileBytes(const QByteArray& nativePath) {
    const int file = open(nativePath.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0) return {};
    std::optional<QByteArray> content = ReadOpenFile(file);
    const int error = errno;
    close(file);
    errno = error;
    return content;
}

bool WriteAll(int file, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const ssize_t count = write(file, bytes.data(), static_cast<size_t>(bytes.size()));
        if (count >= 0) {
            bytes = bytes.sliced(count);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

}  // namespace Sonmira
