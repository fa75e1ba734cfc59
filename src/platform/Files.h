#pragma once

#include "platform/FileIdentity.h"
#include "platform/Handles.h"

#include <QByteArray>
#include <QStringView>

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace Sonmira {

// A file open for reading, by position, so that several readers can share it. Only regular files are
// taken: a pipe would wait for ever and a device may never end. No writer of this process takes the file
// as its target while it is open. ReadAt may be called from any thread.
class InputFile {
public:
    // `path` is an inner path; its name is never looked at, only opened. Fails when it cannot be opened.
    explicit InputFile(QStringView path);

    // Fills `target` from byte `position` on as far as the file goes. Returns the number of bytes, 0 at the
    // end, or a negative errno value.
    std::ptrdiff_t ReadAt(qint64 position, std::span<std::byte> target) const;
    // The same with all bytes that there are; fails when the drive does. Returns how many there were.
    std::size_t ReadFully(qint64 position, std::span<std::byte> target) const;
    // Bytes of the file now.
    qint64 Size() const;

private:
    Descriptor File;
    std::optional<ReadMark> Mark;
};

// Up to `count` bytes from `position` on, fewer at the end of the file or where it cannot be read.
QByteArray BytesAt(const InputFile& file, qint64 position, qsizetype count);

// A file being written: buffered, seekable for headers that are completed at the end. The first failure
// stays: whatever is written after it fails alike, and Close reports it again. A file that is not closed
// keeps what reached it.
class OutputFile {
public:
    // What becomes of a file that has the name already.
    enum class Existing {
        Refused,      // it stays, and the output is none: fails with FileAlreadyExists
        Overwritten,  // it is emptied, but for one that a reader of this process has open, and for a link
    };

    // Creates the file at an inner path.
    explicit OutputFile(QStringView path, Existing existing = Existing::Refused);

    void Write(std::span<const std::byte> bytes);
    // Overwrites bytes that were written before, from byte `position` on.
    void Patch(qint64 position, std::span<const std::byte> bytes);
    // The open file, for a program that writes it in this object's place.
    int Number() const { return File.Number(); }
    // Bytes written so far.
    qint64 Size() const { return Written; }
    // Puts everything on its way to the disk and closes. The file is closed even when this fails.
    void Close();

private:
    void Empty() const;
    void Flush();
    void Send(std::span<const std::byte> bytes, qint64 position);

    Descriptor File;
    std::vector<std::byte> Buffer;
    qint64 Written = 0;
    int Error = 0;
};

// Small text files (settings, language files) as bytes. Names are native bytes.

// A file of more bytes than this is none of ours and is not read.
inline constexpr qint64 LargestTextFile = 64LL * 1024 * 1024;

// The whole content of a regular file; nothing, with errno set, when it cannot be had. Never waits on a
// pipe or a device of that name.
std::optional<QByteArray> ReadFileBytes(const QByteArray& nativePath);

// Writes all bytes to an open file.
bool WriteAll(int file, QByteArrayView bytes);

}  // namespace Sonmira
