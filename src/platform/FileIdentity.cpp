#include "platform/FileIdentity.h"

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

}  // namespace Sonmira
