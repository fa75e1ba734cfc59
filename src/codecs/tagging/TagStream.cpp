#include "codecs/tagging/TagStream.h"

#include "platform/Failure.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// By how much a tag can make a file longer: the longest text and room for the next ones.
constexpr long MostGrowth = 64L << 20;

int OpenFor(const QByteArray& file, int mode) {
    return open(file.constData(), mode | O_CLOEXEC | O_NONBLOCK);
}

std::size_t ReadAt(int file, long place, char* bytes, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = pread(file, bytes + done, size - done, place + static_cast<long>(done));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

}  // namespace

TagStream::TagStream(const QByteArray& file)
    : Name(file),
      IsWritable(faccessat(AT_FDCWD, file.constData(), W_OK, AT_EACCESS) == 0),
      File(OpenFor(file, O_RDONLY)),
      FirstLength(length()) {}

QByteArray TagStream::Bytes(qint64 place, qint64 size) {
    const qint64 left = place < 0 ? 0 : std::max<qint64>(length() - place, 0);
    QByteArray bytes(std::clamp<qint64>(size, 0, left), '\0');
    if (bytes.isEmpty()) return bytes;
    const auto room = static_cast<std::size_t>(bytes.size());
    bytes.truncate(static_cast<qsizetype>(ReadAt(File.Number(), place, bytes.data(), room)));
    return bytes;
}

void TagStream::Replace(qint64 place, qint64 size, const QByteArray& bytes) {
    insert(TagLib::ByteVector(bytes.constData(), static_cast<unsigned>(bytes.size())),
           static_cast<TagPlace>(place), static_cast<unsigned long>(size));
}

void TagStream::CheckWrites() const {
    if (Error != 0) throw WritingFailure(Error);
}

TagLib::ByteVector TagStream::readBlock(unsigned long length) {
    Count(1, 0);
    // Sizes come from the file and may lie.
    const long left = std::max(this->length() - Place, 0L);
    const auto size = std::min(length, static_cast<unsigned long>(left));
    TagLib::ByteVector bytes(static_cast<unsigned>(size), '\0');
    const std::size_t count = size == 0 ? 0 : ReadAt(File.Number(), Place, bytes.data(), size);
    bytes.resize(static_cast<unsigned>(count));
    Place += static_cast<long>(count);
    return bytes;
}

void TagStream::writeBlock(const TagLib::ByteVector& data) {
    WriteAt(Place, data.data(), data.size());
    Place += static_cast<long>(data.size());
}

void TagStream::insert(const TagLib::ByteVector& data, TagPlace start, unsigned long replace) {
    const auto place = static_cast<long>(start);
    MoveEnd(place + static_cast<long>(replace), place + static_cast<long>(data.size()));
    WriteAt(place, data.data(), data.size());
    Place = place + static_cast<long>(data.size());
}

void TagStream::removeBlock(TagPlace start, unsigned long length) {
    const auto place = static_cast<long>(start);
    MoveEnd(place + static_cast<long>(length), place);
}

void TagStream::seek(long offset, Position from) {
    const long origin = from == Beginning ? 0 : from == Current ? Place : length();
    Place = std::max(origin + offset, 0L);
}

long TagStream::length() {
    struct stat status {};
    return fstat(File.Number(), &status) == 0 ? status.st_size : 0;
}

void TagStream::truncate(long length) {
    if (IsOpenForWriting() && ftruncate(File.Number(), length) != 0) Error = errno;
}

// Others watch for programs that open a file to write: one that only reads a tag must not look like that.
bool TagStream::IsOpenForWriting() {
    if (Error != 0 || WasWritten) return Error == 0;
    Descriptor writing(OpenFor(Name, O_RDWR));
    if (writing.IsOpen()) {
        File = std::move(writing);
        WasWritten = true;
    } else {
        Error = errno;
    }
    return WasWritten;
}

void TagStream::MoveEnd(long from, long to) {
    constexpr long Most = 1L << 20;
    const long end = length();
    from = std::min(from, end);
    if (from == to || !IsOpenForWriting()) return;
    if (to > from) {
        if (to - from > MostGrowth) throw Failure(FailureNumber::Component, u"The tag would be too large"_s);
        // Room first: a disk that gets full in the middle would leave the sound half moved.
        Error = posix_fallocate(File.Number(), end, to - from);
        if (Error != 0) {
            [[maybe_unused]] const int cut = ftruncate(File.Number(), end);
            return;
        }
    }
    std::vector<char> bytes(static_cast<std::size_t>(std::clamp(end - from, 0L, Most)));
    for (long done = 0; done < end - from && Error == 0;) {
        const long size = std::min(end - from - done, Most);
        // Towards the end the last bytes go first, so that none is overwritten before it has moved.
        const long offset = to > from ? end - from - done - size : done;
        const auto wanted = static_cast<std::size_t>(size);
        if (ReadAt(File.Number(), from + offset, bytes.data(), wanted) < wanted) Error = EIO;
        WriteAt(to + offset, bytes.data(), wanted);
        done += size;
    }
    if (to < from) truncate(to + end - from);
}

// All of the file is moved a few times at most, and a step for every byte of it is more than any table has.
void TagStream::Count(long steps, long bytes) {
    constexpr long Tag = 64L << 20;
    constexpr long FewSteps = 1'000'000;
    constexpr long Times = 4;
    Steps += steps;
    Written += bytes;
    if (Steps <= FirstLength + FewSteps && Written <= Times * FirstLength + Tag) return;
    throw Failure(FailureNumber::Component, u"The file is damaged, and a save would come to no end"_s);
}

void TagStream::WriteAt(long place, const char* bytes, std::size_t size) {
    Count(1, static_cast<long>(size));
    if (place + static_cast<long>(size) > FirstLength + MostGrowth) {
        throw Failure(FailureNumber::Component, u"The tag would be too large"_s);
    }
    for (std::size_t done = 0; done < size && IsOpenForWriting();) {
        const ssize_t count =
            pwrite(File.Number(), bytes + done, size - done, place + static_cast<long>(done));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) {
            Error = count < 0 ? errno : ENOSPC;
            return;
        }
        done += static_cast<std::size_t>(count);
    }
}

}  // namespace Sonmira
