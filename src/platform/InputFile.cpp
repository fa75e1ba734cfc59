#include "platform/InputFile.h"

#include "platform/FileFailure.h"
#include "platform/NativePath.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace Sonmira {

InputFile::InputFile(QStringView path) {
    // Without O_NONBLOCK a named pipe would hold the program here until somebody writes to it.
    File = Descriptor(::open(ToNative(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!File.IsOpen()) throw ReadingFailure(errno);
    struct stat status = {};
    if (::fstat(File.Number(), &status) != 0) throw ReadingFailure(errno);
    if (S_ISDIR(status.st_mode)) throw ReadingFailure(EISDIR);
    if (!S_ISREG(status.st_mode)) throw ReadingFailure(ENXIO);
    Mark.emplace(FileIdentity{status.st_dev, status.st_ino});
}

std::ptrdiff_t InputFile::ReadAt(qint64 position, std::span<std::byte> target) const {
    while (true) {
        const ssize_t count = ::pread(File.Number(), target.data(), target.size(), position);
        if (count >= 0) return count;
        if (errno != EINTR) return -errno;
    }
}

std::size_t InputFile::ReadFully(qint64 position, std::span<std::byte> target) const {
    std::size_t done = 0;
    while (done < target.size()) {
        const std::ptrdiff_t count = ReadAt(position + static_cast<qint64>(done), target.subspan(done));
        if (count < 0) throw ReadingFailure(static_cast<int>(-count));
        if (count == 0) break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

qint64 InputFile::Size() const {
    struct stat status = {};
    return ::fstat(File.Number(), &status) == 0 ? status.st_size : 0;
}

QByteArray BytesAt(const InputFile& file, qint64 position, qsizetype count) {
    QByteArray bytes(count, '\0');
    const std::span chars(bytes.data(), static_cast<std::size_t>(bytes.size()));
    const auto read = file.ReadAt(position, std::as_writable_bytes(chars));
    return bytes.first(std::max<qsizetype>(read, 0));
}

}  // namespace Sonmira
