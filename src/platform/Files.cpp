#include "platform/Files.h"

#include "platform/Failure.h"
#include "platform/FileIdentity.h"
#include "platform/Folders.h"
#include "platform/Paths.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace Sonmira {

using namespace Qt::StringLiterals;

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

namespace {
constexpr std::size_t BufferSize = std::size_t{256} * 1024;

// A device takes what is written and holds nothing that could be lost.
bool IsDevice(const QByteArray& native) {
    struct stat status = {};
    return ::lstat(native.constData(), &status) == 0 && S_ISCHR(status.st_mode);
}

}  // namespace

OutputFile::OutputFile(QStringView path, Existing existing) {
    // Created by this call alone, so that of two programs that found the name free only one has it.
    // O_NONBLOCK refuses a pipe without a reader; O_NOFOLLOW keeps a link, which anyone may have laid into a
    // folder that all share, from leading the output onto another file.
    const QByteArray native = ToNative(path);
    const bool overwrites = existing == Existing::Overwritten || IsDevice(native);
    const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW | (overwrites ? 0 : O_EXCL);
    File = Descriptor(::open(native.constData(), flags, 0666));
    if (!File.IsOpen() && errno == ELOOP) {
        throw Failure(FailureNumber::PathFileAccess, u"The output is a link to another file"_s);
    }
    if (!File.IsOpen()) throw WritingFailure(errno == EEXIST && IsFolder(path) ? EISDIR : errno);
    if (existing == Existing::Overwritten) Empty();
    Buffer.reserve(BufferSize);
}

void OutputFile::Empty() const {
    struct stat status = {};
    if (::fstat(File.Number(), &status) != 0) throw WritingFailure(errno);
    if (IsBeingRead({status.st_dev, status.st_ino})) {
        throw Failure(FailureNumber::PathFileAccess, u"The output is the file that is being read"_s);
    }
    if (S_ISREG(status.st_mode) && ::ftruncate(File.Number(), 0) != 0) throw WritingFailure(errno);
}

void OutputFile::Write(std::span<const std::byte> bytes) {
    if (Buffer.size() + bytes.size() > BufferSize) Flush();
    Written += static_cast<qint64>(bytes.size());
    if (bytes.size() >= BufferSize) {
        Send(bytes, Written - static_cast<qint64>(bytes.size()));
    } else {
        Buffer.insert(Buffer.end(), bytes.begin(), bytes.end());
    }
}

void OutputFile::Patch(qint64 position, std::span<const std::byte> bytes) {
    Flush();
    Send(bytes, position);
}

void OutputFile::Close() {
    if (!File.IsOpen()) return;
    try {
        Flush();
    } catch (const Failure&) {
        File.Close();
        throw;
    }
    if (const int error = File.Close(); error != 0) throw WritingFailure(error);
}

void OutputFile::Flush() {
    std::vector<std::byte> bytes = std::move(Buffer);
    Send(bytes, Written - static_cast<qint64>(bytes.size()));
    bytes.clear();
    Buffer = std::move(bytes);
}

void OutputFile::Send(std::span<const std::byte> bytes, qint64 position) {
    while (Error == 0 && !bytes.empty()) {
        const ssize_t count = ::pwrite(File.Number(), bytes.data(), bytes.size(), position);
        if (count < 0) {
            if (errno != EINTR) Error = errno;
            continue;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(count));
        position += count;
    }
    if (Error != 0) throw WritingFailure(Error);
}

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
