#pragma once

#include "platform/FileIdentity.h"
#include "platform/Handles.h"

#include <QByteArray>
#include <QStringView>

#include <cstddef>
#include <optional>
#include <span>

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

}  // namespace Sonmira
