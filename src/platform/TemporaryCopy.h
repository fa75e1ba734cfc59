#pragma once

#include "platform/Descriptor.h"

#include <QByteArray>

struct stat;

namespace Sonmira {

// Whether a copy has a name while it is written. Without one it vanishes with the program, whatever ends
// that; some file systems (FAT, many on the network) have only files with names.
enum class CopyName { NoneWherePossible, Always };

// A new file beside the one whose place it is to take; gone unless it has taken that.
class TemporaryCopy {
public:
    // `folder` is a native path with a slash at its end.
    TemporaryCopy(QByteArray folder, CopyName name);
    ~TemporaryCopy();
    TemporaryCopy(const TemporaryCopy&) = delete;
    TemporaryCopy& operator=(const TemporaryCopy&) = delete;

    // By this it can be opened, for as long as the object lives.
    QByteArray Path() const;

    void FillFrom(int source, qint64 size);
    // Owner, rights and extended attributes.
    void TakeManners(int source, const struct stat& status) const;
    // What was written by name is on the disk before the name changes hands.
    void Settle() const;
    // False where the file system made a file without a name, but gives it none.
    bool Replace(const QByteArray& file);

private:
    bool MakeUnnamed();
    void MakeNamed();
    bool TakeName();

    QByteArray Folder;
    QByteArray Name;  // empty for none
    Descriptor Handle;
};

// Removes from a folder the named copies of programs that have died.
void RemoveDeadCopies(const QByteArray& folder);

}  // namespace Sonmira
