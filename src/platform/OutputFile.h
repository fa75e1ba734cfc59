#pragma once

#include "platform/Handles.h"

#include <QStringView>

#include <cstddef>
#include <span>
#include <vector>

namespace Sonmira {

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

}  // namespace Sonmira
