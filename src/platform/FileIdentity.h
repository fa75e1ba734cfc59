#pragma once

#include <QStringView>

#include <cstdint>
#include <optional>

namespace Sonmira {

// Which file a descriptor stands for, whatever names and links lead to it, and which files are being read.
// A writer must never empty the file that is its own source. May be used from any thread.

struct FileIdentity {
    std::uint64_t Device = 0;
    std::uint64_t Number = 0;
    bool operator<(const FileIdentity& other) const {
        return Device != other.Device ? Device < other.Device : Number < other.Number;
    }
};

// Marks a file as being read for as long as the object lives; several may mark the same file.
class ReadMark {
public:
    explicit ReadMark(FileIdentity file);
    ~ReadMark();
    ReadMark(const ReadMark&) = delete;
    ReadMark& operator=(const ReadMark&) = delete;

private:
    FileIdentity File;
};

bool IsBeingRead(FileIdentity file);

// What tells whether a path still names the file that it named before, with the content that it had: device,
// inode, size in bytes, and the times of the last change of content and of entry in nanoseconds.
struct FileStamp {
    std::uint64_t Device = 0;
    std::uint64_t Inode = 0;
    std::int64_t Size = 0;
    std::int64_t ContentTime = 0;
    std::int64_t EntryTime = 0;

    bool operator==(const FileStamp&) const = default;
};

// Of the file at an inner path, through links; nothing where there is none.
std::optional<FileStamp> StampOf(QStringView path);

}  // namespace Sonmira
