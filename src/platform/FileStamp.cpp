#include "platform/FileStamp.h"

#include "platform/NativePath.h"

#include <sys/stat.h>

namespace Sonmira {

namespace {

std::int64_t Nanoseconds(const timespec& time) {
    constexpr std::int64_t OfASecond = 1'000'000'000;
    return std::int64_t{time.tv_sec} * OfASecond + time.tv_nsec;
}

}  // namespace

std::optional<FileStamp> StampOf(QStringView path) {
    struct stat status {};
    if (stat(ToNative(path).constData(), &status) != 0) return std::nullopt;
    return FileStamp{status.st_dev, status.st_ino, status.st_size, Nanoseconds(status.st_mtim),
                     Nanoseconds(status.st_ctim)};
}

}  // namespace Sonmira
