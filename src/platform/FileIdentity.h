#pragma once

#include <cstdint>

// Which file a descriptor stands for, whatever names and links lead to it, and which files are being read.
// A writer must never empty the file that is its own source. May be used from any thread.
namespace Sonmira {

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

}  // namespace Sonmira
