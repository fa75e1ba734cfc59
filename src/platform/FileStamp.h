#pragma once

#include <QStringView>

#include <cstdint>
#include <optional>

namespace Sonmira {

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
