#pragma once

#include "codecs/Descriptor.h"

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
    // Creates or empties the file at an inner path. Fails, and leaves the file as it is, when a reader of
    // this process has it open.
    explicit OutputFile(QStringView path);

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
    void Flush();
    void Send(std::span<const std::byte> bytes, qint64 position);

    Descriptor File;
    std::vector<std::byte> Buffer;
    qint64 Written = 0;
    int Error = 0;
};

}  // namespace Sonmira
