#include "platform/FileIdentity.h"

#include "platform/Paths.h"

#include <sys/stat.h>

#include <mutex>
#include <set>

namespace Sonmira {

namespace {

struct MarkedFiles {
    std::mutex Guard;
    std::multiset<FileIdentity> Files;
};

MarkedFiles& Marked() {
    static MarkedFiles files;
    return files;
}

}  // namespace

ReadMark::ReadMark(FileIdentity file) : File(file) {
    const std::lock_guard lock(Marked().Guard);
    Marked().Files.insert(File);
}

ReadMark::~ReadMark() {
    const std::lock_guard lock(Marked().Guard);
    Marked().Files.erase(Marked().Files.find(File));
}

bool IsBeingRead(FileIdentity file) {
    const std::lock_guard lock(Marked().Guard);
    return Marked().Files.contains(file);
}

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
