#pragma once

#include "platform/Handles.h"

#include <QByteArray>

#include <tiostream.h>

namespace Sonmira {

// A place in a file where the tag library inserts and removes: signed from its version 2 on, as all others
// are.
#if TAGLIB_MAJOR_VERSION >= 2
using TagPlace = TagLib::offset_t;
#else
using TagPlace = unsigned long;
#endif

// A file under the tag library. Its own stream never says when a disk is full, and a tag or sound that was
// cut off would pass for one that was saved; this one remembers the first write that failed. A library that
// a damaged file leads round in circles comes to an end: work far beyond what a tag can need fails.
class TagStream final : public TagLib::IOStream {
public:
    // A native path. The file is open for reading until the first write.
    explicit TagStream(const QByteArray& file);

    // That many bytes from there, as far as the file goes.
    QByteArray Bytes(qint64 place, qint64 size);
    // Puts `bytes` where `size` others are, and moves all that follows.
    void Replace(qint64 place, qint64 size, const QByteArray& bytes);
    // Fails as the first failed write did.
    void CheckWrites() const;

    TagLib::FileName name() const override { return Name.constData(); }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector& data) override;
    void insert(const TagLib::ByteVector& data, TagPlace start, unsigned long replace) override;
    void removeBlock(TagPlace start, unsigned long length) override;
    bool readOnly() const override { return !IsWritable; }
    bool isOpen() const override { return File.IsOpen(); }
    void seek(long offset, Position from) override;
    long tell() const override { return Place; }
    long length() override;
    void truncate(long length) override;

private:
    // False once anything has failed.
    bool IsOpenForWriting();
    // Moves all that follows `from` to `to`, which may lie on either side.
    void MoveEnd(long from, long to);
    // Counts work against what the file and a tag can need. Fails beyond that.
    void Count(long steps, long bytes);
    void WriteAt(long place, const char* bytes, std::size_t size);

    QByteArray Name;
    bool IsWritable;
    bool WasWritten = false;
    Descriptor File;
    long Place = 0;
    int Error = 0;
    long FirstLength;
    long Steps = 0;
    long Written = 0;
};

}  // namespace Sonmira
